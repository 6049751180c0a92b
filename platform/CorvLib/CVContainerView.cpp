#include "CVContainerView.h"

#include "CVDisplayView.h"

#include <Foundation/NSNotificationCenter.h>
#include <UIKit/UIControl.h>
#include <UIKit/UITapGestureRecognizer.h>

#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(CVContainerWindow, UIWindow)
{
    c.method<&CVContainerWindow::enableTapToTerminate>("enableTapToTerminate");
    c.method<&CVContainerWindow::terminateTapRecognized>("terminateTapRecognized:");
}

OBJC_IMPLEMENT_CLASS(CVContainerView, UIView)
{
    c.method<&CVContainerView::show>("show");
    c.method<&CVContainerView::hide>("hide");
    c.method<&CVContainerView::viewWillShow>("viewWillShow");
    c.method<&CVContainerView::viewDidShow>("viewDidShow");
    c.method<&CVContainerView::viewWillHide>("viewWillHide");
    c.method<&CVContainerView::viewDidHide>("viewDidHide");
    c.method<&CVContainerView::isActive>("isActive");
    c.method<&CVContainerView::containerWindow>("containerWindow");
    c.method<&CVContainerView::interfaceOrientationDidChange>("interfaceOrientationDidChange:");
}

CVContainerWindow::CVContainerWindow(CVContainerView* owner)
    : UIWindow(CVScreenBoundsForActiveOrientation())
    , m_owner(owner)
{
    setName("containerWindow");
    setWindowLevel(2000);
    setHidden(true);
}

void CVContainerWindow::enableTapToTerminate()
{
    if (m_tapToTerminate)
        return;
    m_tapToTerminate = true;
    auto recognizer = make<UITapGestureRecognizer>(this, OBJC_SEL("terminateTapRecognized:"));
    recognizer->setCancelsTouchesInView(false);
    addGestureRecognizer(recognizer.get());
}

// Whether a tap on this view is the overlay's content's own: it lands on a
// control, or on a view (or an ancestor below the overlay) with recognisers
// of its own. Plain views, labels and images are background.
static bool tapBelongsToContent(UIView* hit, UIView* overlay, UIView* window)
{
    for (UIView* view = hit; view && view != overlay && view != window; view = view->superview()) {
        if (view->isKindOfClass(UIControl::classObject()) || !view->gestureRecognizers().empty())
            return true;
    }
    return false;
}

void CVContainerWindow::terminateTapRecognized(UIGestureRecognizer* recognizer)
{
    CGPoint point = recognizer->locationInView(this);
    if (!tapBelongsToContent(hitTest(point), m_owner, this))
        m_owner->hide();
}

CVContainerView::CVContainerView()
    : UIView(CVScreenBoundsForActiveOrientation())
{
    setName(className());
    m_containerWindow = make<CVContainerWindow>(this);
    CVObserveInterfaceOrientation(this, OBJC_SEL("interfaceOrientationDidChange:"));
}

CVContainerView::~CVContainerView() { NSNotificationCenter::defaultCenter()->removeObserver(this); }

void CVContainerView::interfaceOrientationDidChange(NSNotification*)
{
    if (!m_active)
        return;
    m_containerWindow->setFrame(CVScreenBoundsForActiveOrientation());
    setFrame(m_containerWindow->bounds());
    CVSendUpdateFrame(this);
}

void CVContainerView::show()
{
    bool alreadyVisible = m_active && !m_containerWindow->isHidden();
    m_active = true;
    uint64_t generation = ++m_generation;
    m_containerWindow->setFrame(CVScreenBoundsForActiveOrientation());
    setFrame(m_containerWindow->bounds());
    if (superview() != m_containerWindow.get())
        m_containerWindow->addSubview(this);
    objc::send(this, OBJC_SEL("viewWillShow"));
    m_containerWindow->setHidden(false);
    setHidden(false);
    if (!alreadyVisible)
        setAlpha(0);
    RefPtr<CVContainerView> protect(this);
    animateWithDuration(fadeDuration, [protect] { protect->setAlpha(1); }, [protect, generation](bool) {
        if (protect->m_generation == generation)
            objc::send(protect.get(), OBJC_SEL("viewDidShow"));
    });
}

void CVContainerView::hide()
{
    if (!m_active)
        return;
    m_active = false;
    uint64_t generation = ++m_generation;
    objc::send(this, OBJC_SEL("viewWillHide"));
    RefPtr<CVContainerView> protect(this);
    animateWithDuration(fadeDuration, [protect] { protect->setAlpha(0); }, [protect, generation](bool) {
        if (protect->m_generation != generation)
            return;
        protect->m_containerWindow->setHidden(true);
        objc::send(protect.get(), OBJC_SEL("viewDidHide"));
    });
}

void CVContainerView::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    node["active"] = m_active;
}
