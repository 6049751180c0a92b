#include "UIWindow.h"

#include "UIViewController.h"

#include <algorithm>

OBJC_IMPLEMENT_CLASS(UIWindow, UIView)
{
    c.method<&UIWindow::makeKeyAndVisible>("makeKeyAndVisible");
    c.method<&UIWindow::makeKeyWindow>("makeKeyWindow");
    c.method<&UIWindow::windowLevel>("windowLevel");
    c.method<&UIWindow::setWindowLevel>("setWindowLevel:");
    c.method<&UIWindow::rootViewController>("rootViewController");
    c.method<&UIWindow::setRootViewController>("setRootViewController:");
    c.classMethod<&UIWindow::keyWindow>("keyWindow");
    c.allocatable();
}

static std::vector<UIWindow*>& windowList()
{
    static auto* windows = new std::vector<UIWindow*>();
    return *windows;
}

static UIWindow* s_keyWindow;
static uint64_t s_nextOrderSequence = 1;

UIWindow::UIWindow() { registerWindow(); }

UIWindow::UIWindow(CGRect frame)
    : UIView(frame)
{
    registerWindow();
}

void UIWindow::registerWindow()
{
    UIView::setHidden(true);
    m_orderSequence = s_nextOrderSequence++;
    windowList().push_back(this);
}

UIWindow::~UIWindow()
{
    std::erase(windowList(), this);
    if (s_keyWindow == this)
        s_keyWindow = nullptr;
}

void UIWindow::orderFront() { m_orderSequence = s_nextOrderSequence++; }

void UIWindow::setHidden(bool hidden)
{
    if (hidden == isHidden())
        return;
    RefPtr<UIViewController> controller = m_rootViewController;
    if (controller)
        controller->beginAppearanceTransition(!hidden, false);
    UIView::setHidden(hidden);
    if (!hidden)
        orderFront();
    if (controller)
        controller->endAppearanceTransition();
}

void UIWindow::makeKeyWindow() { s_keyWindow = this; }

void UIWindow::makeKeyAndVisible()
{
    makeKeyWindow();
    if (isHidden())
        setHidden(false);
    else
        orderFront();
}

void UIWindow::setRootViewController(UIViewController* controller)
{
    if (controller == m_rootViewController)
        return;
    RefPtr<UIViewController> old = std::move(m_rootViewController);
    RefPtr<UIViewController> protect(controller);
    bool onScreen = !isHidden();
    if (old) {
        if (onScreen)
            old->beginAppearanceTransition(false, false);
        if (old->isViewLoaded())
            old->view()->removeFromSuperview();
        if (onScreen)
            old->endAppearanceTransition();
    }
    m_rootViewController = protect;
    if (!controller)
        return;
    if (onScreen)
        controller->beginAppearanceTransition(true, false);
    UIView* view = controller->view();
    view->setFrame(bounds());
    view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    addSubview(view);
    if (onScreen)
        controller->endAppearanceTransition();
}

UIWindow* UIWindow::keyWindow() { return s_keyWindow; }

std::vector<UIWindow*> UIWindow::allWindows() { return windowList(); }

std::vector<UIWindow*> UIWindow::visibleWindows()
{
    std::vector<UIWindow*> windows;
    for (UIWindow* window : windowList()) {
        if (!window->isHidden())
            windows.push_back(window);
    }
    std::stable_sort(windows.begin(), windows.end(), [](UIWindow* a, UIWindow* b) {
        return a->m_windowLevel != b->m_windowLevel ? a->m_windowLevel < b->m_windowLevel : a->m_orderSequence < b->m_orderSequence;
    });
    return windows;
}
