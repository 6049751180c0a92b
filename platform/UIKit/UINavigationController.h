#pragma once

#include "UINavigationBar.h"
#include "UIViewController.h"

// A stack of controllers, the top one's view filling the navigation
// controller's view under its navigation bar (which sits below the 20-point
// status bar). Pushing and popping are not animated: the views swap at once
// and the appearance calls follow.
class UINavigationController : public UIViewController {
    OBJC_CLASS(UINavigationController)
public:
    UINavigationController() = default;
    explicit UINavigationController(UIViewController* rootViewController);
    // `initWithRootViewController:` for controllers made by `alloc`; answers self.
    StrongId initWithRootViewController(UIViewController*);

    UINavigationBar* navigationBar() const { return m_navigationBar.get(); }
    bool isNavigationBarHidden() const { return m_navigationBar->isHidden(); }
    void setNavigationBarHidden(bool hidden) { m_navigationBar->setHidden(hidden); }

    // The stack, bottom first.
    const std::vector<RefPtr<UIViewController>>& viewControllers() const { return childViewControllers(); }
    UIViewController* topViewController() const;
    void pushViewController(UIViewController*, bool animated);
    RefPtr<UIViewController> popViewControllerAnimated(bool animated);

    void loadView() override;

private:
    void showTopView(UIViewController* leaving, bool animated);

    RefPtr<UINavigationBar> m_navigationBar { make<UINavigationBar>() };
};
