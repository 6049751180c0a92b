#include "UILongPressGestureRecognizer.h"

#include "UITouch.h"

#include <cmath>

OBJC_IMPLEMENT_CLASS(UILongPressGestureRecognizer, UIGestureRecognizer)
{
    c.method<&UILongPressGestureRecognizer::minimumPressDuration>("minimumPressDuration");
    c.method<&UILongPressGestureRecognizer::setMinimumPressDuration>("setMinimumPressDuration:");
    c.allocatable();
}

void UILongPressGestureRecognizer::touchesBegan(UITouch* touch)
{
    m_startLocation = touch->screenLocation();
    startTimer(m_minimumPressDuration, [this] { setState(UIGestureRecognizerStateBegan); });
}

void UILongPressGestureRecognizer::touchesMoved(UITouch* touch)
{
    if (state() == UIGestureRecognizerStatePossible) {
        CGPoint location = touch->screenLocation();
        if (std::hypot(location.x - m_startLocation.x, location.y - m_startLocation.y) > m_allowableMovement)
            setState(UIGestureRecognizerStateFailed);
        return;
    }
    setState(UIGestureRecognizerStateChanged);
}

void UILongPressGestureRecognizer::touchesEnded(UITouch*)
{
    setState(state() == UIGestureRecognizerStatePossible ? UIGestureRecognizerStateFailed : UIGestureRecognizerStateEnded);
}
