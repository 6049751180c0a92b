#pragma once

#include <UIKit/UIView.h>
#include <UIKit/UIWindow.h>

class CVContainerView;
class NSNotification;

// The window the maker library presents a container overlay in. After
// enableTapToTerminate, a tap that lands outside the overlay's controls
// (anywhere but a control or a view with recognisers of its own) closes the
// overlay.
class CVContainerWindow final : public UIWindow {
    OBJC_CLASS(CVContainerWindow)
public:
    explicit CVContainerWindow(CVContainerView* owner);
    void enableTapToTerminate();
    bool tapToTerminateEnabled() const { return m_tapToTerminate; }
    void terminateTapRecognized(UIGestureRecognizer*);

private:
    CVContainerView* m_owner;
    bool m_tapToTerminate { false };
};

// The maker library's overlay presented in a container window of its own,
// fading in and out on the virtual clock. Subclasses override the four
// viewWill/DidShow/Hide steps and call the base first. Turned while active,
// the window and the overlay take the new screen size and the overlay is
// sent `updateFrame` when its class answers it.
class CVContainerView : public UIView {
    OBJC_CLASS(CVContainerView)
public:
    static constexpr double fadeDuration = 0.25;

    CVContainerView();
    ~CVContainerView() override;

    virtual void show();
    virtual void hide();
    virtual void viewWillShow() { }
    virtual void viewDidShow() { }
    virtual void viewWillHide() { }
    virtual void viewDidHide() { }
    bool isActive() const { return m_active; }
    CVContainerWindow* containerWindow() const { return m_containerWindow.get(); }
    double width() const { return bounds().size.width; }
    double height() const { return bounds().size.height; }
    void interfaceOrientationDidChange(NSNotification*);

    void dumpProperties(nlohmann::json&) const override;

private:
    RefPtr<CVContainerWindow> m_containerWindow;
    bool m_active { false };
    uint64_t m_generation { 0 };
};
