#include "UINavigationController.h"

#include "UIScreen.h"

OBJC_IMPLEMENT_CLASS(UINavigationController, UIViewController)
{
    c.method<&UINavigationController::initWithRootViewController>("initWithRootViewController:");
    c.method<&UINavigationController::navigationBar>("navigationBar");
    c.method<&UINavigationController::topViewController>("topViewController");
    c.method<&UINavigationController::pushViewController>("pushViewController:animated:");
    c.allocatable();
}

static constexpr double statusBarHeight = 20;

UINavigationController::UINavigationController(UIViewController* rootViewController) { initWithRootViewController(rootViewController); }

StrongId UINavigationController::initWithRootViewController(UIViewController* rootViewController)
{
    if (rootViewController && viewControllers().empty())
        pushViewController(rootViewController, false);
    return StrongId(this);
}

UIViewController* UINavigationController::topViewController() const
{
    auto& stack = viewControllers();
    return stack.empty() ? nullptr : stack.back().get();
}

void UINavigationController::loadView()
{
    auto view = UIView::create(UIScreen::mainScreen()->bounds());
    setView(view.get());
    CGRect bounds = view->bounds();
    m_navigationBar->setFrame(CGRectMake(0, statusBarHeight, bounds.size.width, UINavigationBar::height));
    m_navigationBar->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    view->addSubview(m_navigationBar.get());
    showTopView(nullptr, false);
}

void UINavigationController::pushViewController(UIViewController* controller, bool animated)
{
    if (!controller || controller->parentViewController() == this)
        return;
    RefPtr<UIViewController> leaving = topViewController();
    addChildViewController(controller);
    showTopView(leaving.get(), animated);
    objc::send(controller, OBJC_SEL("didMoveToParentViewController:"), static_cast<NSObject*>(this));
}

RefPtr<UIViewController> UINavigationController::popViewControllerAnimated(bool animated)
{
    // The root controller stays.
    if (viewControllers().size() < 2)
        return nullptr;
    RefPtr<UIViewController> leaving = topViewController();
    objc::send(leaving, OBJC_SEL("willMoveToParentViewController:"), static_cast<NSObject*>(nullptr));
    leaving->removeFromParentViewController();
    showTopView(leaving.get(), animated);
    return leaving;
}

// Puts the top controller's view in place of the one leaving, with the
// appearance calls when the navigation controller is itself on screen.
void UINavigationController::showTopView(UIViewController* leaving, bool animated)
{
    if (!isViewLoaded())
        return;
    UIViewController* top = topViewController();
    bool onScreen = isAppeared();
    if (leaving && onScreen)
        leaving->beginAppearanceTransition(false, animated);
    if (top && top != leaving) {
        UIView* content = top->view();
        content->setFrame(view()->bounds());
        content->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
        view()->insertSubviewBelowSubview(content, m_navigationBar.get());
        if (onScreen)
            top->beginAppearanceTransition(true, animated);
    }
    if (leaving && leaving != top && leaving->isViewLoaded())
        leaving->view()->removeFromSuperview();
    if (leaving && onScreen)
        leaving->endAppearanceTransition();
    if (top && onScreen)
        top->endAppearanceTransition();
}
