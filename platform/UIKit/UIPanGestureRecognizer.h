#pragma once

#include "UIGestureRecognizer.h"

// A continuous gesture: the finger moving more than `hysteresis` points
// begins it, further movement changes it, lifting ends it.
class UIPanGestureRecognizer : public UIGestureRecognizer {
    OBJC_CLASS(UIPanGestureRecognizer)
public:
    using UIGestureRecognizer::UIGestureRecognizer;

    static constexpr double hysteresis = 10;

    // The finger's movement since it came down, in points (views are not
    // rotated or scaled, so every view sees the same translation).
    CGPoint translationInView(const UIView*) const { return m_translation; }
    void setTranslation(CGPoint translation, const UIView*);

    std::string kindName() const override { return "pan"; }

    void touchesBegan(UITouch*) override;
    void touchesMoved(UITouch*) override;
    void touchesEnded(UITouch*) override;

protected:
    // Asked once the finger has moved far enough: whether to begin or fail.
    virtual bool shouldBegin(CGPoint) const { return true; }

private:
    CGPoint m_startLocation {};
    CGPoint m_translation {};
};
