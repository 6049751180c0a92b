#pragma once

#include <UIKit/UIView.h>

#include <functional>

class NSNotification;
class UIWindow;

// The maker library's full-screen overlay: a view the size of the screen in
// the current orientation with an inner content view, shown and hidden with a
// short fade on the virtual clock. It is active from the start of showing to
// the start of hiding. Hiding does not set the view hidden: subclasses do that
// in their completion block.
//
// An overlay lives in the window its owner put it in (the host's root
// window), but that window may lie beneath others the user is looking at
// (the notification centre, the search page). So while shown it is lent to
// a window of the library's own above the host's windows, and given back to
// its home once hidden. One without a home is never shown.
//
// Turned while active, it sends itself `updateFrame` through the runtime
// when its subclass answers it, so every overlay is laid out again in one
// place.
class CVDisplayView : public UIView {
    OBJC_CLASS(CVDisplayView)
public:
    static constexpr double fadeDuration = 0.25;
    // Just beneath the status bar, as the root window's content is.
    static constexpr double presentationWindowLevel = 999;

    CVDisplayView();
    ~CVDisplayView() override;

    UIView* displayContainerView() const { return m_displayContainerView.get(); }
    void showWithCompletion(std::function<void()> completion);
    void hideWithCompletion(std::function<void()> completion);
    void updateFrameForActiveOrientation();
    bool isActive() const { return m_active; }
    double width() const { return bounds().size.width; }
    double height() const { return bounds().size.height; }

    // The window that holds the overlay while it is shown; null until the
    // first show.
    UIWindow* presentationWindow() const { return m_presentationWindow.get(); }
    void interfaceOrientationDidChange(NSNotification*);

    void dumpProperties(nlohmann::json&) const override;

private:
    void presentAboveHostWindows();
    void returnHome();

    RefPtr<UIView> m_displayContainerView;
    RefPtr<UIWindow> m_presentationWindow;
    RefPtr<UIView> m_home;
    bool m_active { false };
    uint64_t m_generation { 0 };
};

// The screen's bounds in the current interface orientation.
CGRect CVScreenBoundsForActiveOrientation();

// Has `observer` told, through `selector`, each time the interface
// orientation changes.
void CVObserveInterfaceOrientation(NSObject* observer, objc::SEL selector);

// Sends `updateFrame` to an overlay whose class answers it.
void CVSendUpdateFrame(UIView* overlay);
