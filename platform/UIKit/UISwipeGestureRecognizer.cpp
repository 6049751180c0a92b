#include "UISwipeGestureRecognizer.h"

#include "UITouch.h"

#include <cmath>

OBJC_IMPLEMENT_CLASS(UISwipeGestureRecognizer, UIGestureRecognizer)
{
    c.method<&UISwipeGestureRecognizer::direction>("direction");
    c.method<&UISwipeGestureRecognizer::setDirection>("setDirection:");
    c.allocatable();
}

std::string UISwipeGestureRecognizer::kindName() const
{
    std::string name = "swipe";
    static constexpr const char* names[] = { "-right", "-left", "-up", "-down" };
    for (unsigned bit = 0; bit < 4; ++bit) {
        if (m_direction & (1u << bit))
            name += names[bit];
    }
    return name;
}

void UISwipeGestureRecognizer::touchesBegan(UITouch* touch) { m_startLocation = touch->screenLocation(); }

void UISwipeGestureRecognizer::touchesMoved(UITouch* touch) { evaluate(touch, false); }

void UISwipeGestureRecognizer::touchesEnded(UITouch* touch) { evaluate(touch, true); }

void UISwipeGestureRecognizer::evaluate(UITouch* touch, bool lifted)
{
    CGPoint location = touch->screenLocation();
    double dx = location.x - m_startLocation.x;
    double dy = location.y - m_startLocation.y;
    double along = std::max(std::fabs(dx), std::fabs(dy));
    double across = std::min(std::fabs(dx), std::fabs(dy));
    if (along < minimumDistance) {
        if (lifted)
            setState(UIGestureRecognizerStateFailed);
        return;
    }
    unsigned moved = std::fabs(dx) >= std::fabs(dy) ? (dx > 0 ? UISwipeGestureRecognizerDirectionRight : UISwipeGestureRecognizerDirectionLeft)
                                                    : (dy > 0 ? UISwipeGestureRecognizerDirectionDown : UISwipeGestureRecognizerDirectionUp);
    // Within about 26 degrees of the axis.
    bool straight = across * 2 <= along;
    setState(straight && (m_direction & moved) ? UIGestureRecognizerStateRecognized : UIGestureRecognizerStateFailed);
}
