#pragma once

#include "UIPanGestureRecognizer.h"
#include "UIView.h"

// A view whose bounds origin is the content offset, so that its subviews
// scroll, as UIKit's UIScrollView. A finger dragging in it moves the content
// with it (through the scroll view's own pan recogniser, which takes the
// touch from the views inside once it begins), never past the content's
// edges: there is no rubber band and no deceleration, and paging settles on
// the nearest page. The pan begins only along an axis the content can
// scroll on, so a drag across a horizontal strip reaches the views behind.
//
// Scroll indicators are off unless asked for, and are not drawn.
class UIScrollView : public UIView {
    OBJC_CLASS(UIScrollView)
public:
    UIScrollView();
    explicit UIScrollView(CGRect frame);
    static RefPtr<UIScrollView> create(CGRect frame = CGRectZero) { return make<UIScrollView>(frame); }

    CGSize contentSize() const { return m_contentSize; }
    void setContentSize(CGSize size) { m_contentSize = size; }
    CGPoint contentOffset() const { return bounds().origin; }
    // Any offset may be set in code; only dragging is kept within the content.
    void setContentOffset(CGPoint);
    void setContentOffset(CGPoint offset, bool) { setContentOffset(offset); }
    // The largest offset a drag reaches.
    CGPoint maximumContentOffset() const;

    bool isScrollEnabled() const { return m_panGestureRecognizer->isEnabled(); }
    void setScrollEnabled(bool enabled) { m_panGestureRecognizer->setEnabled(enabled); }
    bool isPagingEnabled() const { return m_pagingEnabled; }
    void setPagingEnabled(bool enabled) { m_pagingEnabled = enabled; }
    bool bounces() const { return m_bounces; }
    void setBounces(bool bounces) { m_bounces = bounces; }
    // Let a drag begin along an axis whose content fits.
    bool alwaysBounceVertical() const { return m_alwaysBounceVertical; }
    void setAlwaysBounceVertical(bool bounce) { m_alwaysBounceVertical = bounce; }
    bool alwaysBounceHorizontal() const { return m_alwaysBounceHorizontal; }
    void setAlwaysBounceHorizontal(bool bounce) { m_alwaysBounceHorizontal = bounce; }
    bool showsHorizontalScrollIndicator() const { return m_showsHorizontalScrollIndicator; }
    void setShowsHorizontalScrollIndicator(bool shows) { m_showsHorizontalScrollIndicator = shows; }
    bool showsVerticalScrollIndicator() const { return m_showsVerticalScrollIndicator; }
    void setShowsVerticalScrollIndicator(bool shows) { m_showsVerticalScrollIndicator = shows; }
    // Whether a drag takes the touch from the views inside (they get
    // touchesCancelled).
    bool canCancelContentTouches() const { return m_panGestureRecognizer->cancelsTouchesInView(); }
    void setCanCancelContentTouches(bool cancels) { m_panGestureRecognizer->setCancelsTouchesInView(cancels); }
    bool delaysContentTouches() const { return m_delaysContentTouches; }
    void setDelaysContentTouches(bool delays) { m_delaysContentTouches = delays; }
    bool isDragging() const { return m_dragging; }

    // Hears scrollViewDidScroll:, scrollViewWillBeginDragging: and
    // scrollViewDidEndDragging:willDecelerate: when it implements them. Kept
    // alive by the scroll view.
    NSObject* delegate() const { return m_delegate.get(); }
    void setDelegate(NSObject* delegate) { m_delegate = delegate; }

    UIPanGestureRecognizer* panGestureRecognizer() const { return m_panGestureRecognizer.get(); }

    void dumpProperties(nlohmann::json&) const override;

protected:
    // After every change of the content offset, once the delegate has heard.
    virtual void didScroll() { }

private:
    friend class UIScrollViewPanGestureRecognizer;
    void setUp();
    bool canScrollAlong(CGPoint translation) const;
    void handlePan(UIPanGestureRecognizer&);

    CGSize m_contentSize {};
    bool m_pagingEnabled { false };
    bool m_bounces { true };
    bool m_alwaysBounceVertical { false };
    bool m_alwaysBounceHorizontal { false };
    bool m_showsHorizontalScrollIndicator { false };
    bool m_showsVerticalScrollIndicator { false };
    bool m_delaysContentTouches { true };
    bool m_dragging { false };
    CGPoint m_dragStartOffset {};
    RefPtr<NSObject> m_delegate;
    RefPtr<UIPanGestureRecognizer> m_panGestureRecognizer;
};
