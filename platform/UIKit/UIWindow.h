#pragma once

#include "UIView.h"

#include <cstdint>
#include <vector>

class UIViewController;

using UIWindowLevel = double;
inline constexpr UIWindowLevel UIWindowLevelNormal = 0;
inline constexpr UIWindowLevel UIWindowLevelStatusBar = 1000;
inline constexpr UIWindowLevel UIWindowLevelAlert = 2000;

// A window: the root of a view tree on the screen. Every window joins the
// process's window list when it is made and leaves it when it is freed (the
// list does not keep windows alive, as UIKit's does not). A window starts
// hidden, as UIKit's do; the windows on screen are the visible ones, stacked
// by level and, within a level, by the order in which they were last shown.
// Rendering and dumps go back to front, hit testing front to back.
class UIWindow : public UIView {
    OBJC_CLASS(UIWindow)
public:
    UIWindow();
    explicit UIWindow(CGRect frame);
    ~UIWindow() override;
    static RefPtr<UIWindow> create(CGRect frame) { return make<UIWindow>(frame); }

    UIWindow* window() const override { return const_cast<UIWindow*>(this); }

    UIWindowLevel windowLevel() const { return m_windowLevel; }
    void setWindowLevel(UIWindowLevel level) { m_windowLevel = level; }
    void setHidden(bool) override;
    void makeKeyAndVisible();
    void makeKeyWindow();
    bool isKeyWindow() const { return keyWindow() == this; }

    // The controller whose view fills the window; it appears and disappears
    // with the window.
    UIViewController* rootViewController() const { return m_rootViewController.get(); }
    void setRootViewController(UIViewController*);

    static UIWindow* keyWindow();
    // Every window, in the order they were made.
    static std::vector<UIWindow*> allWindows();
    // The windows on screen, back to front.
    static std::vector<UIWindow*> visibleWindows();

private:
    void registerWindow();
    void orderFront();

    UIWindowLevel m_windowLevel { UIWindowLevelNormal };
    uint64_t m_orderSequence { 0 };
    RefPtr<UIViewController> m_rootViewController;
};
