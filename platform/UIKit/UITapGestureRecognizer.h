#pragma once

#include "UIGestureRecognizer.h"

// A discrete gesture of one or more quick taps at about the same place. The
// taps must follow each other within maximumTapInterval seconds on the clock
// and the finger may not stray more than allowableMovement points; a single
// tap that must wait for a double tap to fail therefore succeeds that much
// after the finger lifts.
class UITapGestureRecognizer : public UIGestureRecognizer {
    OBJC_CLASS(UITapGestureRecognizer)
public:
    using UIGestureRecognizer::UIGestureRecognizer;

    static constexpr double maximumTapInterval = 0.35;
    static constexpr double allowableMovement = 45;

    int numberOfTapsRequired() const { return m_numberOfTapsRequired; }
    void setNumberOfTapsRequired(int taps) { m_numberOfTapsRequired = taps < 1 ? 1 : taps; }

    std::string kindName() const override { return m_numberOfTapsRequired == 1 ? "tap" : m_numberOfTapsRequired == 2 ? "doubletap" : "tap" + std::to_string(m_numberOfTapsRequired); }
    // A tap needing more taps is not stopped by one needing fewer: with a
    // single and a double tap on one view and no failure requirement, a
    // double tap runs the single tap's action, then the double tap's.
    bool canBePreventedByGestureRecognizer(const UIGestureRecognizer&) const override;

    void touchesBegan(UITouch*) override;
    void touchesMoved(UITouch*) override;
    void touchesEnded(UITouch*) override;

protected:
    void reset() override { m_tapsSoFar = 0; }

private:
    int m_numberOfTapsRequired { 1 };
    int m_tapsSoFar { 0 };
    CGPoint m_firstLocation {};
};
