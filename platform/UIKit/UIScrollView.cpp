#include "UIScrollView.h"

#include "UIKitMessaging.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UIScrollView, UIView)
{
    c.method<static_cast<void (UIScrollView::*)(CGPoint)>(&UIScrollView::setContentOffset)>("setContentOffset:");
    c.method<static_cast<void (UIScrollView::*)(CGPoint, bool)>(&UIScrollView::setContentOffset)>("setContentOffset:animated:");
    c.method<&UIScrollView::contentOffset>("contentOffset");
    c.method<&UIScrollView::contentSize>("contentSize");
    c.method<&UIScrollView::setContentSize>("setContentSize:");
    c.method<&UIScrollView::delegate>("delegate");
    c.method<&UIScrollView::setDelegate>("setDelegate:");
    c.allocatable();
}

// The scroll view's own pan: it begins only where the scroll view can move,
// and is not listed among the view's gestures in dumps.
class UIScrollViewPanGestureRecognizer final : public UIPanGestureRecognizer {
public:
    std::string kindName() const override { return {}; }

protected:
    bool shouldBegin(CGPoint translation) const override
    {
        auto* scrollView = dynamic_cast<UIScrollView*>(view());
        return scrollView && scrollView->canScrollAlong(translation);
    }
};

UIScrollView::UIScrollView() { setUp(); }

UIScrollView::UIScrollView(CGRect frame)
    : UIView(frame)
{
    setUp();
}

void UIScrollView::setUp()
{
    // Content scrolled out of the view is not seen, as in UIKit, where a
    // scroll view clips to its bounds unless told otherwise.
    setClipsToBounds(true);
    m_panGestureRecognizer = make<UIScrollViewPanGestureRecognizer>();
    // The recogniser lives in this view; its handler must not keep the view alive.
    m_panGestureRecognizer->addHandler([this](UIGestureRecognizer& recognizer) { handlePan(static_cast<UIPanGestureRecognizer&>(recognizer)); });
    addGestureRecognizer(m_panGestureRecognizer.get());
}

void UIScrollView::setContentOffset(CGPoint offset)
{
    if (std::isnan(offset.x) || std::isnan(offset.y))
        return;
    CGRect area = bounds();
    if (area.origin == offset)
        return;
    RefPtr<UIScrollView> protect(this);
    area.origin = offset;
    setBounds(area);
    setNeedsLayout();
    UIKitMessaging::tell(m_delegate.get(), OBJC_SEL("scrollViewDidScroll:"), static_cast<NSObject*>(this));
    didScroll();
}

CGPoint UIScrollView::maximumContentOffset() const
{
    CGSize size = bounds().size;
    return { std::max(0.0, m_contentSize.width - size.width), std::max(0.0, m_contentSize.height - size.height) };
}

bool UIScrollView::canScrollAlong(CGPoint translation) const
{
    CGPoint maximum = maximumContentOffset();
    if (std::fabs(translation.x) >= std::fabs(translation.y))
        return maximum.x > 0 || m_alwaysBounceHorizontal;
    return maximum.y > 0 || m_alwaysBounceVertical;
}

void UIScrollView::handlePan(UIPanGestureRecognizer& pan)
{
    RefPtr<UIScrollView> protect(this);
    NSObject* self = this;
    UIGestureRecognizerState state = pan.state();
    if (state == UIGestureRecognizerStateBegan) {
        m_dragging = true;
        m_dragStartOffset = contentOffset();
        UIKitMessaging::tell(m_delegate.get(), OBJC_SEL("scrollViewWillBeginDragging:"), self);
    }
    CGPoint translation = pan.translationInView(this);
    CGPoint maximum = maximumContentOffset();
    CGPoint offset { std::clamp(m_dragStartOffset.x - translation.x, 0.0, maximum.x), std::clamp(m_dragStartOffset.y - translation.y, 0.0, maximum.y) };
    if (state == UIGestureRecognizerStateEnded || state == UIGestureRecognizerStateCancelled) {
        m_dragging = false;
        if (m_pagingEnabled) {
            CGSize page = bounds().size;
            if (page.width > 0)
                offset.x = std::min(std::round(offset.x / page.width) * page.width, maximum.x);
            if (page.height > 0)
                offset.y = std::min(std::round(offset.y / page.height) * page.height, maximum.y);
        }
        setContentOffset(offset);
        UIKitMessaging::tell(m_delegate.get(), OBJC_SEL("scrollViewDidEndDragging:willDecelerate:"), self, false);
        return;
    }
    setContentOffset(offset);
}

void UIScrollView::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    node["contentSize"] = { m_contentSize.width, m_contentSize.height };
    CGPoint offset = contentOffset();
    node["contentOffset"] = { offset.x, offset.y };
}
