#include "UIControl.h"

#include "UIKitMessaging.h"
#include "UITapGestureRecognizer.h"
#include "UITouch.h"

#include <algorithm>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UIControl, UIView)
{
    c.method<&UIControl::addTarget>("addTarget:action:forControlEvents:");
    c.method<&UIControl::removeTarget>("removeTarget:action:forControlEvents:");
    c.method<&UIControl::sendActionsForControlEvents>("sendActionsForControlEvents:");
    c.method<&UIControl::isEnabled>("isEnabled");
    c.method<&UIControl::setEnabled>("setEnabled:");
    c.method<&UIControl::isSelected>("isSelected");
    c.method<&UIControl::setSelected>("setSelected:");
    c.method<&UIControl::isHighlighted>("isHighlighted");
    c.method<&UIControl::setHighlighted>("setHighlighted:");
    c.allocatable();
}

void UIControl::addTarget(NSObject* target, objc::SEL action, unsigned controlEvents)
{
    if (!target || !action || !controlEvents)
        return;
    for (auto& entry : m_targets) {
        if (entry.object.get() == target && entry.action == action) {
            entry.events |= controlEvents;
            return;
        }
    }
    m_targets.push_back({ target, action, controlEvents });
}

void UIControl::removeTarget(NSObject* target, objc::SEL action, unsigned controlEvents)
{
    for (auto& entry : m_targets) {
        if ((!target || entry.object.get() == target) && (!action || entry.action == action))
            entry.events &= ~controlEvents;
    }
    std::erase_if(m_targets, [](const Target& entry) { return !entry.events; });
}

void UIControl::sendActionsForControlEvents(unsigned controlEvents)
{
    RefPtr<UIControl> protect(this);
    auto targets = m_targets;
    for (auto& entry : targets) {
        // Kept alive for the action, which may let go of it.
        RefPtr<NSObject> object = entry.object.get();
        if (object && (entry.events & controlEvents))
            UIKitMessaging::sendAction(object.get(), entry.action, this);
    }
}

unsigned UIControl::state() const
{
    unsigned state = UIControlStateNormal;
    if (m_highlighted)
        state |= UIControlStateHighlighted;
    if (!m_enabled)
        state |= UIControlStateDisabled;
    if (m_selected)
        state |= UIControlStateSelected;
    return state;
}

bool UIControl::isInsideTrackingArea(UITouch* touch) const
{
    constexpr double margin = 70;
    return CGRectContainsPoint(CGRectInset(bounds(), -margin, -margin), touch->locationInView(this));
}

void UIControl::touchesBegan(UITouch* touch)
{
    if (!m_enabled)
        return UIView::touchesBegan(touch);
    RefPtr<UIControl> protect(this);
    m_hasTouch = true;
    m_touchInside = true;
    setHighlighted(true);
    m_tracking = beginTracking(touch);
    unsigned events = UIControlEventTouchDown;
    if (touch->tapCount() > 1)
        events |= UIControlEventTouchDownRepeat;
    sendActionsForControlEvents(events);
}

void UIControl::touchesMoved(UITouch* touch)
{
    if (!m_hasTouch)
        return UIView::touchesMoved(touch);
    RefPtr<UIControl> protect(this);
    bool wasInside = m_touchInside;
    m_touchInside = isInsideTrackingArea(touch);
    setHighlighted(m_touchInside);
    if (m_tracking)
        m_tracking = continueTracking(touch);
    unsigned events = m_touchInside ? UIControlEventTouchDragInside : UIControlEventTouchDragOutside;
    if (wasInside != m_touchInside)
        events |= m_touchInside ? UIControlEventTouchDragEnter : UIControlEventTouchDragExit;
    sendActionsForControlEvents(events);
}

void UIControl::touchesEnded(UITouch* touch)
{
    if (!m_hasTouch)
        return UIView::touchesEnded(touch);
    RefPtr<UIControl> protect(this);
    m_touchInside = isInsideTrackingArea(touch);
    if (m_tracking)
        endTracking(touch);
    m_hasTouch = false;
    m_tracking = false;
    setHighlighted(false);
    sendActionsForControlEvents(m_touchInside ? UIControlEventTouchUpInside : UIControlEventTouchUpOutside);
}

void UIControl::touchesCancelled(UITouch* touch)
{
    if (!m_hasTouch)
        return UIView::touchesCancelled(touch);
    RefPtr<UIControl> protect(this);
    if (m_tracking)
        cancelTracking();
    m_hasTouch = false;
    m_tracking = false;
    setHighlighted(false);
    sendActionsForControlEvents(UIControlEventTouchCancel);
}

bool UIControl::preventsAncestorGestureRecognizer(const UIGestureRecognizer& recognizer) const
{
    auto* tap = dynamic_cast<const UITapGestureRecognizer*>(&recognizer);
    return m_enabled && tap && tap->numberOfTapsRequired() == 1;
}

void UIControl::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    node["enabled"] = m_enabled;
}

std::vector<objc::SEL> UIControl::actions() const
{
    std::vector<objc::SEL> list;
    for (const Target& target : m_targets) {
        if (target.object)
            list.push_back(target.action);
    }
    return list;
}
