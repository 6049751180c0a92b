#pragma once

#include "UIControl.h"

// A horizontal slider, as UIKit's UISlider: a thumb on a track between a
// minimum and a maximum value. A finger that comes down on the thumb drags it
// (the value follows the finger's movement along the track); value-changed is
// sent while it moves (or once at the end when not continuous). Setting the
// value in code sends nothing, as in UIKit.
class UISlider : public UIControl {
    OBJC_CLASS(UISlider)
public:
    using UIControl::UIControl;

    static constexpr double thumbSize = 28;

    float value() const { return m_value; }
    // Clamped to the range.
    void setValue(float);
    void setValue(float value, bool) { setValue(value); }
    float minimumValue() const { return m_minimumValue; }
    void setMinimumValue(float);
    float maximumValue() const { return m_maximumValue; }
    void setMaximumValue(float);
    bool isContinuous() const { return m_continuous; }
    void setContinuous(bool continuous) { m_continuous = continuous; }

    UIColor* minimumTrackTintColor() const { return m_minimumTrackTintColor.get(); }
    void setMinimumTrackTintColor(RefPtr<UIColor> color) { m_minimumTrackTintColor = std::move(color); }
    UIColor* maximumTrackTintColor() const { return m_maximumTrackTintColor.get(); }
    void setMaximumTrackTintColor(RefPtr<UIColor> color) { m_maximumTrackTintColor = std::move(color); }
    UIColor* thumbTintColor() const { return m_thumbTintColor.get(); }
    void setThumbTintColor(RefPtr<UIColor> color) { m_thumbTintColor = std::move(color); }

    // Where the thumb's centre is, in the slider's coordinates, for the
    // current value and for any value.
    CGPoint thumbCenter() const { return thumbCenterForValue(m_value); }
    CGPoint thumbCenterForValue(float) const;

    bool beginTracking(UITouch*) override;
    bool continueTracking(UITouch*) override;
    void endTracking(UITouch*) override;

    // A slider keeps swipes and pans of its ancestors off its thumb, as
    // UIKit does, besides the taps every control keeps.
    bool preventsAncestorGestureRecognizer(const UIGestureRecognizer&) const override;
    // iOS 9's look: a 2-point rounded track, blue up to the thumb and light
    // grey after it unless tinted, and a white round thumb with a soft shadow.
    void drawContent(RenderContext&) const override;
    void dumpProperties(nlohmann::json&) const override;

private:
    // The span of the thumb's centre: the bounds less half a thumb each side.
    double trackStart() const;
    double trackLength() const;

    float m_value { 0 };
    float m_minimumValue { 0 };
    float m_maximumValue { 1 };
    bool m_continuous { true };
    RefPtr<UIColor> m_minimumTrackTintColor;
    RefPtr<UIColor> m_maximumTrackTintColor;
    RefPtr<UIColor> m_thumbTintColor;
    // While tracking: the value and the finger's x when the finger came down.
    float m_trackingStartValue { 0 };
    double m_trackingStartX { 0 };
};
