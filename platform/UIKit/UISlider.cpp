#include "UISlider.h"

#include "RenderContext.h"
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
    c.method<&UISlider::setMinimumTrackTintColor>("setMinimumTrackTintColor:");
    c.method<&UISlider::setMaximumTrackTintColor>("setMaximumTrackTintColor:");
    c.method<&UISlider::setThumbTintColor>("setThumbTintColor:");
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

static void setSourceColor(cairo_t* cr, const UIColor* color, double red, double green, double blue)
{
    if (color)
        cairo_set_source_rgba(cr, color->red(), color->green(), color->blue(), color->alpha());
    else
        cairo_set_source_rgb(cr, red, green, blue);
}

void UISlider::drawContent(RenderContext& context) const
{
    cairo_t* cr = context.cr;
    constexpr double trackHeight = 2;
    CGPoint thumb = thumbCenter();
    double start = trackStart() - thumbSize / 2;
    double end = trackStart() + trackLength() + thumbSize / 2;
    double trackY = thumb.y - trackHeight / 2;
    if (end > start) {
        cairo_save(cr);
        addRoundedRectangle(cr, CGRectMake(start, trackY, end - start, trackHeight), trackHeight / 2);
        cairo_clip(cr);
        setSourceColor(cr, m_maximumTrackTintColor.get(), 0.717, 0.717, 0.717);
        cairo_rectangle(cr, thumb.x, trackY, end - thumb.x, trackHeight);
        cairo_fill(cr);
        setSourceColor(cr, m_minimumTrackTintColor.get(), 0, 122 / 255.0, 1);
        cairo_rectangle(cr, start, trackY, thumb.x - start, trackHeight);
        cairo_fill(cr);
        cairo_restore(cr);
    }

    double radius = thumbSize / 2;
    // A soft shadow under the thumb, then a hairline edge, then the thumb.
    for (int ring = 3; ring >= 1; --ring) {
        cairo_arc(cr, thumb.x, thumb.y + 2, radius + ring * 0.5, 0, 2 * M_PI);
        cairo_set_source_rgba(cr, 0, 0, 0, 0.05);
        cairo_fill(cr);
    }
    cairo_arc(cr, thumb.x, thumb.y, radius + 0.25, 0, 2 * M_PI);
    cairo_set_source_rgba(cr, 0, 0, 0, 0.12);
    cairo_fill(cr);
    cairo_arc(cr, thumb.x, thumb.y, radius - 0.25, 0, 2 * M_PI);
    setSourceColor(cr, m_thumbTintColor.get(), 1, 1, 1);
    cairo_fill(cr);
}

void UISlider::dumpProperties(nlohmann::json& node) const
{
    UIControl::dumpProperties(node);
    node["value"] = m_value;
}
