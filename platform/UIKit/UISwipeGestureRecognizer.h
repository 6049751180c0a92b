#pragma once

#include "UIGestureRecognizer.h"

enum UISwipeGestureRecognizerDirection : unsigned {
    UISwipeGestureRecognizerDirectionRight = 1 << 0,
    UISwipeGestureRecognizerDirectionLeft = 1 << 1,
    UISwipeGestureRecognizerDirectionUp = 1 << 2,
    UISwipeGestureRecognizerDirectionDown = 1 << 3,
};

// A discrete gesture: the finger moves at least minimumDistance points,
// mostly along one axis, in one of the permitted directions. Movement
// mostly along another direction, or too little of it before the finger
// lifts, fails it.
class UISwipeGestureRecognizer : public UIGestureRecognizer {
    OBJC_CLASS(UISwipeGestureRecognizer)
public:
    using UIGestureRecognizer::UIGestureRecognizer;

    static constexpr double minimumDistance = 50;

    // A mask of UISwipeGestureRecognizerDirection values; right by default.
    unsigned direction() const { return m_direction; }
    void setDirection(unsigned direction) { m_direction = direction; }

    // "swipe-up"; a mask of several directions names each: "swipe-left-right".
    std::string kindName() const override;

    void touchesBegan(UITouch*) override;
    void touchesMoved(UITouch*) override;
    void touchesEnded(UITouch*) override;

private:
    void evaluate(UITouch*, bool lifted);

    unsigned m_direction { UISwipeGestureRecognizerDirectionRight };
    CGPoint m_startLocation {};
};
