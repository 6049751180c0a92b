#pragma once

#include "UIGestureRecognizer.h"

// A continuous gesture: the finger held still for minimumPressDuration
// seconds on the clock begins it, moving changes it, lifting ends it. Lifting
// before, or straying more than allowableMovement points before it began,
// makes it fail. Its targets hear every state change (began, changed,
// ended), as UIKit sends them.
class UILongPressGestureRecognizer : public UIGestureRecognizer {
    OBJC_CLASS(UILongPressGestureRecognizer)
public:
    using UIGestureRecognizer::UIGestureRecognizer;

    double minimumPressDuration() const { return m_minimumPressDuration; }
    void setMinimumPressDuration(double duration) { m_minimumPressDuration = duration < 0 ? 0 : duration; }
    double allowableMovement() const { return m_allowableMovement; }
    void setAllowableMovement(double movement) { m_allowableMovement = movement; }

    std::string kindName() const override { return "longpress"; }

    void touchesBegan(UITouch*) override;
    void touchesMoved(UITouch*) override;
    void touchesEnded(UITouch*) override;

private:
    double m_minimumPressDuration { 0.5 };
    double m_allowableMovement { 10 };
    CGPoint m_startLocation {};
};
