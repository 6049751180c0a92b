#include "CVDisplayView.h"

#include <Foundation/NSNotificationCenter.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIWindow.h>

#include <algorithm>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(CVDisplayView, UIView)
{
    c.method<&CVDisplayView::displayContainerView>("displayContainerView");
    c.method<&CVDisplayView::updateFrameForActiveOrientation>("updateFrameForActiveOrientation");
    c.method<&CVDisplayView::isActive>("isActive");
    c.method<&CVDisplayView::width>("width");
    c.method<&CVDisplayView::height>("height");
    c.method<&CVDisplayView::presentationWindow>("presentationWindow");
    c.method<&CVDisplayView::interfaceOrientationDidChange>("interfaceOrientationDidChange:");
}

CGRect CVScreenBoundsForActiveOrientation()
{
    CGRect screen = UIScreen::mainScreen()->bounds();
    double shorter = std::min(screen.size.width, screen.size.height);
    double longer = std::max(screen.size.width, screen.size.height);
    long long orientation = objc::send<long long>(UIApplication::sharedApplication(), OBJC_SEL("_getSpringBoardOrientation"));
    bool landscape = orientation == 3 || orientation == 4;
    return landscape ? CGRectMake(0, 0, longer, shorter) : CGRectMake(0, 0, shorter, longer);
}

void CVObserveInterfaceOrientation(NSObject* observer, objc::SEL selector)
{
    NSNotificationCenter::defaultCenter()->addObserver(observer, selector, UIApplicationDidChangeStatusBarOrientationNotification);
}

void CVSendUpdateFrame(UIView* overlay)
{
    if (overlay->respondsToSelector(OBJC_SEL("updateFrame")))
        objc::send(overlay, OBJC_SEL("updateFrame"));
}

CVDisplayView::CVDisplayView()
    : UIView(CVScreenBoundsForActiveOrientation())
{
    setName(className());
    m_displayContainerView = make<UIView>(bounds());
    m_displayContainerView->setName("displayContainerView");
    m_displayContainerView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    CVObserveInterfaceOrientation(this, OBJC_SEL("interfaceOrientationDidChange:"));
}

CVDisplayView::~CVDisplayView() { NSNotificationCenter::defaultCenter()->removeObserver(this); }

void CVDisplayView::interfaceOrientationDidChange(NSNotification*)
{
    if (!m_active)
        return;
    if (m_presentationWindow && superview() == m_presentationWindow.get())
        m_presentationWindow->setFrame(CVScreenBoundsForActiveOrientation());
    CVSendUpdateFrame(this);
}

void CVDisplayView::presentAboveHostWindows()
{
    if (!m_presentationWindow) {
        m_presentationWindow = UIWindow::create(CVScreenBoundsForActiveOrientation());
        m_presentationWindow->setName("displayWindow");
        m_presentationWindow->setWindowLevel(presentationWindowLevel);
    }
    if (superview() != m_presentationWindow.get()) {
        m_home = superview();
        m_presentationWindow->addSubview(this);
    }
    m_presentationWindow->setFrame(CVScreenBoundsForActiveOrientation());
    m_presentationWindow->setHidden(false);
}

void CVDisplayView::returnHome()
{
    if (!m_presentationWindow || superview() != m_presentationWindow.get())
        return;
    if (m_home)
        m_home->addSubview(this);
    m_home = nullptr;
    m_presentationWindow->setHidden(true);
}

void CVDisplayView::updateFrameForActiveOrientation() { setFrame(CVScreenBoundsForActiveOrientation()); }

void CVDisplayView::showWithCompletion(std::function<void()> completion)
{
    // Showing again while shown fades on from where it is instead of
    // blinking out first.
    bool alreadyVisible = m_active && !isHidden();
    m_active = true;
    uint64_t generation = ++m_generation;
    setHidden(false);
    if (superview())
        presentAboveHostWindows();
    if (!alreadyVisible)
        setAlpha(0);
    RefPtr<CVDisplayView> protect(this);
    animateWithDuration(fadeDuration, [protect] { protect->setAlpha(1); }, [protect, generation, completion = std::move(completion)](bool) {
        // A hide that started meanwhile wins; its own block runs instead.
        if (protect->m_generation == generation && completion)
            completion();
    });
}

void CVDisplayView::hideWithCompletion(std::function<void()> completion)
{
    m_active = false;
    uint64_t generation = ++m_generation;
    RefPtr<CVDisplayView> protect(this);
    animateWithDuration(fadeDuration, [protect] { protect->setAlpha(0); }, [protect, generation, completion = std::move(completion)](bool) {
        if (protect->m_generation != generation)
            return;
        if (completion)
            completion();
        // The block may have shown the overlay again.
        if (protect->m_generation == generation)
            protect->returnHome();
    });
}

void CVDisplayView::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    node["active"] = m_active;
}
