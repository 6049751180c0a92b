#pragma once

#include <UIKit/UIView.h>

#include <functional>

// The maker library's full-screen overlay: a view the size of the screen in
// the current orientation with an inner content view, shown and hidden with a
// short fade on the virtual clock. It is active from the start of showing to
// the start of hiding. Hiding does not set the view hidden: subclasses do that
// in their completion block.
class CVDisplayView : public UIView {
    OBJC_CLASS(CVDisplayView)
public:
    static constexpr double fadeDuration = 0.25;

    CVDisplayView();

    UIView* displayContainerView() const { return m_displayContainerView.get(); }
    void showWithCompletion(std::function<void()> completion);
    void hideWithCompletion(std::function<void()> completion);
    void updateFrameForActiveOrientation();
    bool isActive() const { return m_active; }
    double width() const { return bounds().size.width; }
    double height() const { return bounds().size.height; }

    void dumpProperties(nlohmann::json&) const override;

private:
    RefPtr<UIView> m_displayContainerView;
    bool m_active { false };
    uint64_t m_generation { 0 };
};

// The screen's bounds in the current interface orientation.
CGRect CVScreenBoundsForActiveOrientation();
