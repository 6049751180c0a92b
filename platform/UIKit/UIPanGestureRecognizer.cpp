#include "UIPanGestureRecognizer.h"

#include "UITouch.h"
#include "UIView.h"

#include <cmath>

OBJC_IMPLEMENT_CLASS(UIPanGestureRecognizer, UIGestureRecognizer)
{
    c.method<&UIPanGestureRecognizer::translationInView>("translationInView:");
    c.allocatable();
}

void UIPanGestureRecognizer::setTranslation(CGPoint translation, const UIView*)
{
    // Later movement counts from here.
    m_startLocation.x += m_translation.x - translation.x;
    m_startLocation.y += m_translation.y - translation.y;
    m_translation = translation;
}

void UIPanGestureRecognizer::touchesBegan(UITouch* touch)
{
    m_startLocation = touch->screenLocation();
    m_translation = {};
}

void UIPanGestureRecognizer::touchesMoved(UITouch* touch)
{
    CGPoint location = touch->screenLocation();
    m_translation = { location.x - m_startLocation.x, location.y - m_startLocation.y };
    if (state() != UIGestureRecognizerStatePossible) {
        setState(UIGestureRecognizerStateChanged);
        return;
    }
    if (std::hypot(m_translation.x, m_translation.y) < hysteresis)
        return;
    setState(shouldBegin(m_translation) ? UIGestureRecognizerStateBegan : UIGestureRecognizerStateFailed);
}

void UIPanGestureRecognizer::touchesEnded(UITouch* touch)
{
    CGPoint location = touch->screenLocation();
    m_translation = { location.x - m_startLocation.x, location.y - m_startLocation.y };
    setState(state() == UIGestureRecognizerStatePossible ? UIGestureRecognizerStateFailed : UIGestureRecognizerStateEnded);
}
