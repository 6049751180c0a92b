#include "CVDisplayView.h"

#include <UIKit/UIApplication.h>
#include <UIKit/UIScreen.h>

#include <algorithm>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(CVDisplayView, UIView)
{
    c.method<&CVDisplayView::displayContainerView>("displayContainerView");
    c.method<&CVDisplayView::updateFrameForActiveOrientation>("updateFrameForActiveOrientation");
    c.method<&CVDisplayView::isActive>("isActive");
    c.method<&CVDisplayView::width>("width");
    c.method<&CVDisplayView::height>("height");
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

CVDisplayView::CVDisplayView()
    : UIView(CVScreenBoundsForActiveOrientation())
{
    setName(className());
    m_displayContainerView = make<UIView>(bounds());
    m_displayContainerView->setName("displayContainerView");
    m_displayContainerView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
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
        superview()->bringSubviewToFront(this);
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
        if (protect->m_generation == generation && completion)
            completion();
    });
}

void CVDisplayView::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    node["active"] = m_active;
}
