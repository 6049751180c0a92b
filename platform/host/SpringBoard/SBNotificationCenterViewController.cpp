#include "SBNotificationCenterViewController.h"

#include "SBNotificationCenterLayoutViewController.h"

#include <UIKit/UIScreen.h>
#include <UIKit/UIVisualEffectView.h>

OBJC_IMPLEMENT_CLASS(SBNotificationCenterViewController, UIViewController)
{
    c.method<&SBNotificationCenterViewController::loadStatusBar>("_loadStatusBar");
}

void SBNotificationCenterViewController::loadView()
{
    auto view = UIView::create(UIScreen::mainScreen()->bounds());
    view->setName("notificationCenterView");
    view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    setView(view.get());

    // The sheet is a dark blur of what it covers, as iOS 9 draws it, so the
    // lock screen's text under it does not compete with the centre's own.
    auto backdrop = make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(UIBlurEffectStyleDark));
    backdrop->setName("_backdropView");
    backdrop->setFrame(view->bounds());
    backdrop->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    view->addSubview(backdrop.get());

    m_layoutViewController = make<SBNotificationCenterLayoutViewController>();
    addChildViewController(m_layoutViewController.get());
    view->addSubview(m_layoutViewController->view());
    m_layoutViewController->didMoveToParentViewController(this);
    objc::send(this, OBJC_SEL("_loadStatusBar"));
}

void SBNotificationCenterViewController::loadStatusBar()
{
    if (m_statusBarView)
        return;
    UIScreen* screen = UIScreen::mainScreen();
    m_statusBarView = make<SBStatusBarView>(CGRectMake(0, 0, view()->bounds().size.width, SBStatusBarView::height), screen->scale());
    m_statusBarView->setName("_statusBarView");
    m_statusBarView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    view()->addSubview(m_statusBarView.get());
}
