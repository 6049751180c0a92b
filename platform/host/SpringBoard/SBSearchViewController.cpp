#include "SBSearchViewController.h"

#include "../SpotlightUI/SPUINavigationController.h"
#include "../SpotlightUI/SPUISearchViewController.h"

#include <UIKit/UIScreen.h>
#include <UIKit/UIVisualEffectView.h>

#include <algorithm>
#include <cmath>

OBJC_IMPLEMENT_CLASS(SBSearchViewController, UIViewController)
{
    c.method<&SBSearchViewController::init>("init");
    c.method<&SBSearchViewController::updatePresentationProgress>("updatePresentationProgress:");
    c.method<&SBSearchViewController::didFinishPresenting>("didFinishPresenting:");
    c.allocatable();
}

void SBSearchViewController::loadView()
{
    auto view = UIView::create(UIScreen::mainScreen()->bounds());
    view->setName("searchView");
    view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    setView(view.get());

    // Over the lock screen iOS 9 draws the search page on a dark blur.
    m_backdropView = make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(UIBlurEffectStyleDark));
    m_backdropView->setName("_backdropView");
    m_backdropView->setFrame(view->bounds());
    m_backdropView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    view->addSubview(m_backdropView.get());

    StrongId search = objc::send<StrongId>(objc::alloc(SPUISearchViewController::classObject()), OBJC_SEL("init"));
    m_searchViewController = objc::castRef<SPUISearchViewController>(search);
    StrongId navigation = objc::send<StrongId>(objc::alloc(SPUINavigationController::classObject()),
        OBJC_SEL("initWithRootViewController:"), static_cast<UIViewController*>(m_searchViewController.get()));
    m_navigationController = objc::castRef<SPUINavigationController>(navigation);
    if (!m_navigationController)
        return;
    addChildViewController(m_navigationController.get());
    UIView* navigationView = m_navigationController->view();
    navigationView->setFrame(view->bounds());
    navigationView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    view->addSubview(navigationView);
    m_navigationController->didMoveToParentViewController(this);
}

void SBSearchViewController::updatePresentationProgress(double progress)
{
    if (std::isnan(progress))
        return;
    progress = std::clamp(progress, 0.0, 1.0);
    if (m_backdropView)
        m_backdropView->setAlpha(progress);
    if (m_navigationController && m_navigationController->isViewLoaded())
        m_navigationController->view()->setAlpha(progress);
}

void SBSearchViewController::didFinishPresenting(bool presented) { m_presented = presented; }
