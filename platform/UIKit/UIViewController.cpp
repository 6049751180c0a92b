#include "UIViewController.h"

#include "UINavigationController.h"
#include "UIScreen.h"

#include <algorithm>

OBJC_IMPLEMENT_CLASS(UIViewController, UIResponder)
{
    c.method<&UIViewController::view>("view");
    c.method<&UIViewController::setView>("setView:");
    c.method<&UIViewController::isViewLoaded>("isViewLoaded");
    c.method<&UIViewController::loadView>("loadView");
    c.method<&UIViewController::viewDidLoad>("viewDidLoad");
    c.method<&UIViewController::viewWillAppear>("viewWillAppear:");
    c.method<&UIViewController::viewDidAppear>("viewDidAppear:");
    c.method<&UIViewController::viewWillDisappear>("viewWillDisappear:");
    c.method<&UIViewController::viewDidDisappear>("viewDidDisappear:");
    c.method<&UIViewController::addChildViewController>("addChildViewController:");
    c.method<&UIViewController::removeFromParentViewController>("removeFromParentViewController");
    c.method<&UIViewController::willMoveToParentViewController>("willMoveToParentViewController:");
    c.method<&UIViewController::didMoveToParentViewController>("didMoveToParentViewController:");
    c.method<&UIViewController::parentViewController>("parentViewController");
    c.allocatable();
}

UIViewController::~UIViewController()
{
    for (auto& child : m_children)
        child->m_parent = nullptr;
}

UIView* UIViewController::view()
{
    loadViewIfNeeded();
    return m_view.get();
}

void UIViewController::setView(UIView* view) { m_view = view; }

void UIViewController::loadViewIfNeeded()
{
    if (m_view)
        return;
    RefPtr<UIViewController> protect(this);
    objc::send(this, OBJC_SEL("loadView"));
    // A loadView that made nothing still leaves a view, as UIKit's does.
    if (!m_view)
        UIViewController::loadView();
    objc::send(this, OBJC_SEL("viewDidLoad"));
}

void UIViewController::loadView() { m_view = UIView::create(UIScreen::mainScreen()->bounds()); }

void UIViewController::beginAppearanceTransition(bool isAppearing, bool animated)
{
    RefPtr<UIViewController> protect(this);
    if (isAppearing) {
        if (m_appearance == Appearance::Appeared || m_appearance == Appearance::Appearing)
            return;
        m_appearance = Appearance::Appearing;
    } else {
        if (m_appearance == Appearance::Disappeared || m_appearance == Appearance::Disappearing)
            return;
        m_appearance = Appearance::Disappearing;
    }
    m_transitionAnimated = animated;
    objc::send(this, isAppearing ? OBJC_SEL("viewWillAppear:") : OBJC_SEL("viewWillDisappear:"), animated);
    auto children = m_children;
    for (auto& child : children) {
        if (m_view && child->isViewLoaded() && child->m_view->isDescendantOfView(m_view.get()))
            child->beginAppearanceTransition(isAppearing, animated);
    }
}

void UIViewController::endAppearanceTransition()
{
    RefPtr<UIViewController> protect(this);
    if (m_appearance == Appearance::Appearing) {
        m_appearance = Appearance::Appeared;
        objc::send(this, OBJC_SEL("viewDidAppear:"), m_transitionAnimated);
    } else if (m_appearance == Appearance::Disappearing) {
        m_appearance = Appearance::Disappeared;
        objc::send(this, OBJC_SEL("viewDidDisappear:"), m_transitionAnimated);
    } else {
        return;
    }
    auto children = m_children;
    for (auto& child : children)
        child->endAppearanceTransition();
}

void UIViewController::addChildViewController(UIViewController* child)
{
    if (!child || child == this || child->m_parent == this)
        return;
    RefPtr<UIViewController> protect(child);
    if (child->m_parent)
        child->removeFromParentViewController();
    objc::send(child, OBJC_SEL("willMoveToParentViewController:"), static_cast<NSObject*>(this));
    m_children.push_back(protect);
    child->m_parent = this;
}

void UIViewController::removeFromParentViewController()
{
    UIViewController* parent = m_parent;
    if (!parent)
        return;
    RefPtr<UIViewController> protect(this);
    m_parent = nullptr;
    std::erase(parent->m_children, protect);
    objc::send(this, OBJC_SEL("didMoveToParentViewController:"), static_cast<NSObject*>(nullptr));
}

UINavigationController* UIViewController::navigationController() const
{
    for (UIViewController* controller = m_parent; controller; controller = controller->m_parent) {
        if (auto* navigation = dynamic_cast<UINavigationController*>(controller))
            return navigation;
    }
    return nullptr;
}
