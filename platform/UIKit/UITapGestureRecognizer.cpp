#include "UITapGestureRecognizer.h"

#include "UITouch.h"

#include <cmath>

OBJC_IMPLEMENT_CLASS(UITapGestureRecognizer, UIGestureRecognizer)
{
    c.method<&UITapGestureRecognizer::numberOfTapsRequired>("numberOfTapsRequired");
    c.method<&UITapGestureRecognizer::setNumberOfTapsRequired>("setNumberOfTapsRequired:");
    c.allocatable();
}

bool UITapGestureRecognizer::canBePreventedByGestureRecognizer(const UIGestureRecognizer& other) const
{
    auto* tap = dynamic_cast<const UITapGestureRecognizer*>(&other);
    return !tap || tap->m_numberOfTapsRequired >= m_numberOfTapsRequired;
}

static double distance(CGPoint a, CGPoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

void UITapGestureRecognizer::touchesBegan(UITouch* touch)
{
    stopTimer();
    CGPoint location = touch->screenLocation();
    if (m_tapsSoFar == 0)
        m_firstLocation = location;
    else if (distance(location, m_firstLocation) > allowableMovement)
        setState(UIGestureRecognizerStateFailed);
}

void UITapGestureRecognizer::touchesMoved(UITouch* touch)
{
    if (distance(touch->screenLocation(), m_firstLocation) > allowableMovement)
        setState(UIGestureRecognizerStateFailed);
}

void UITapGestureRecognizer::touchesEnded(UITouch*)
{
    if (++m_tapsSoFar >= m_numberOfTapsRequired) {
        setState(UIGestureRecognizerStateRecognized);
        return;
    }
    // Wait for the next tap; without it in time the gesture fails.
    startTimer(maximumTapInterval, [this] { setState(UIGestureRecognizerStateFailed); });
}
