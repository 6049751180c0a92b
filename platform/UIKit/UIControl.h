#pragma once

#include "UIView.h"

#include <vector>

enum UIControlEvents : unsigned {
    UIControlEventTouchDown = 1 << 0,
    UIControlEventTouchDownRepeat = 1 << 1,
    UIControlEventTouchDragInside = 1 << 2,
    UIControlEventTouchDragOutside = 1 << 3,
    UIControlEventTouchDragEnter = 1 << 4,
    UIControlEventTouchDragExit = 1 << 5,
    UIControlEventTouchUpInside = 1 << 6,
    UIControlEventTouchUpOutside = 1 << 7,
    UIControlEventTouchCancel = 1 << 8,
    UIControlEventValueChanged = 1 << 12,
    UIControlEventAllEvents = 0xFFFFFFFF,
};

enum UIControlState : unsigned {
    UIControlStateNormal = 0,
    UIControlStateHighlighted = 1 << 0,
    UIControlStateDisabled = 1 << 1,
    UIControlStateSelected = 1 << 2,
};

// A view that turns touches into control events and sends its targets their
// actions, as UIKit's UIControl: touch down, drags inside and outside, touch
// up inside (within 70 points of the bounds, UIKit's margin for a finger)
// or outside, cancel; value changes come from subclasses. A control gets
// these only when no gesture recogniser took the touch, and it keeps the
// single taps of its ancestors' recognisers away from itself (see
// preventsAncestorGestureRecognizer).
class UIControl : public UIView {
    OBJC_CLASS(UIControl)
public:
    using UIView::UIView;

    // Targets are not kept alive, as in UIKit (the target usually holds the
    // control, directly or through its view tree). They are weak
    // references: a target that has gone away is skipped.
    void addTarget(NSObject* target, objc::SEL action, unsigned controlEvents);
    // A null target or action matches any.
    void removeTarget(NSObject* target, objc::SEL action, unsigned controlEvents);
    // The actions its live targets are sent, for any event.
    std::vector<objc::SEL> actions() const;
    void sendActionsForControlEvents(unsigned controlEvents);

    bool isEnabled() const { return m_enabled; }
    virtual void setEnabled(bool enabled) { m_enabled = enabled; }
    bool isSelected() const { return m_selected; }
    virtual void setSelected(bool selected) { m_selected = selected; }
    bool isHighlighted() const { return m_highlighted; }
    virtual void setHighlighted(bool highlighted) { m_highlighted = highlighted; }
    // A mask of UIControlState values.
    unsigned state() const;

    bool isTracking() const { return m_tracking; }
    bool isTouchInside() const { return m_touchInside; }

    // For subclasses that follow the finger; continueTracking answering NO
    // stops the following.
    virtual bool beginTracking(UITouch*) { return true; }
    virtual bool continueTracking(UITouch*) { return true; }
    virtual void endTracking(UITouch*) { }
    virtual void cancelTracking() { }

    void touchesBegan(UITouch*) override;
    void touchesMoved(UITouch*) override;
    void touchesEnded(UITouch*) override;
    void touchesCancelled(UITouch*) override;

    bool preventsAncestorGestureRecognizer(const UIGestureRecognizer&) const override;
    void dumpProperties(nlohmann::json&) const override;

private:
    struct Target {
        WeakPtr<NSObject> object;
        objc::SEL action;
        unsigned events;
    };

    bool isInsideTrackingArea(UITouch*) const;

    std::vector<Target> m_targets;
    bool m_enabled { true };
    bool m_selected { false };
    bool m_highlighted { false };
    // The control has the finger (it came down on it while enabled).
    bool m_hasTouch { false };
    bool m_tracking { false };
    bool m_touchInside { false };
};
