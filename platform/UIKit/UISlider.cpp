#include "UISlider.h"

#include "UIPanGestureRecognizer.h"
#include "UISwipeGestureRecognizer.h"
#include "UITouch.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UISlider, UIControl)
{
    c.method<&UISlider::value>("value");
    c.method<static_cast<void (UISlider::*)(float)>(&UISlider::setValue)>("setValue:");
    c.method<static_cast<void (UISlider::*)(float, bool)>(&UISlider::setValue)>("setValue:animated:");
    c.method<&UISlider::minimumValue>("minimumValue");
    c.method<&UISlider::setMinimumValue>("setMinimumValue:");
    c.method<&UISlider::maximumValue>("maximumValue");
    c.method<&UISlider::setMaximumValue>("setMaximumValue:");
    c.allocatable();
}

void UISlider::setValue(float value)
{
    if (std::isnan(value))
        return;
    m_value = std::clamp(value, m_minimumValue, std::max(m_minimumValue, m_maximumValue));
}

void UISlider::setMinimumValue(float minimum)
{
    if (std::isnan(minimum))
        return;
    m_minimumValue = minimum;
    m_maximumValue = std::max(m_maximumValue, minimum);
    setValue(m_value);
}

void UISlider::setMaximumValue(float maximum)
{
    if (std::isnan(maximum))
        return;
    m_maximumValue = maximum;
    m_minimumValue = std::min(m_minimumValue, maximum);
    setValue(m_value);
}

double UISlider::trackStart() const { return std::min(thumbSize / 2, bounds().size.width / 2); }

double UISlider::trackLength() const { return std::max(0.0, bounds().size.width - 2 * trackStart()); }

CGPoint UISlider::thumbCenterForValue(float value) const
{
    double range = m_maximumValue - m_minimumValue;
    double fraction = range > 0 ? (std::clamp(value, m_minimumValue, m_maximumValue) - m_minimumValue) / range : 0;
    return { bounds().origin.x + trackStart() + fraction * trackLength(), bounds().origin.y + bounds().size.height / 2 };
}

bool UISlider::beginTracking(UITouch* touch)
{
    CGPoint location = touch->locationInView(this);
    CGPoint thumb = thumbCenter();
    // A finger's worth of room around the thumb.
    constexpr double reach = 22;
    if (std::fabs(location.x - thumb.x) > reach || std::fabs(location.y - thumb.y) > std::max(reach, bounds().size.height / 2))
        return false;
    m_trackingStartValue = m_value;
    m_trackingStartX = location.x;
    return true;
}

bool UISlider::continueTracking(UITouch* touch)
{
    double length = trackLength();
    if (length <= 0)
        return true;
    double moved = touch->locationInView(this).x - m_trackingStartX;
    float old = m_value;
    setValue(static_cast<float>(m_trackingStartValue + moved / length * (m_maximumValue - m_minimumValue)));
    if (m_continuous && m_value != old)
        sendActionsForControlEvents(UIControlEventValueChanged);
    return true;
}

void UISlider::endTracking(UITouch* touch)
{
    continueTracking(touch);
    if (!m_continuous && m_value != m_trackingStartValue)
        sendActionsForControlEvents(UIControlEventValueChanged);
}

bool UISlider::preventsAncestorGestureRecognizer(const UIGestureRecognizer& recognizer) const
{
    if (!isEnabled())
        return false;
    return UIControl::preventsAncestorGestureRecognizer(recognizer) || dynamic_cast<const UISwipeGestureRecognizer*>(&recognizer)
        || dynamic_cast<const UIPanGestureRecognizer*>(&recognizer);
}

void UISlider::dumpProperties(nlohmann::json& node) const
{
    UIControl::dumpProperties(node);
    node["value"] = m_value;
}
