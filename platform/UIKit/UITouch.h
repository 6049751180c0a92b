#pragma once

#include <CoreGraphics/CGGeometry.h>
#include <objc/objc.h>

class UIView;
class UIWindow;

enum UITouchPhase : int {
    UITouchPhaseBegan = 0,
    UITouchPhaseMoved = 1,
    UITouchPhaseStationary = 2,
    UITouchPhaseEnded = 3,
    UITouchPhaseCancelled = 4,
};

// The finger on the screen. A touch keeps the view it began on for its whole
// life, wherever it moves, as UIKit's touches do; its locations are kept in
// screen points.
class UITouch final : public NSObject {
    OBJC_CLASS(UITouch)
public:
    UITouch(CGPoint screenLocation, UIView* view, double timestamp, int tapCount);

    UITouchPhase phase() const { return m_phase; }
    double timestamp() const { return m_timestamp; }
    UIView* view() const { return m_view.get(); }
    UIWindow* window() const;
    // How many taps in quick succession at about this place this touch is.
    int tapCount() const { return m_tapCount; }

    // A null view means screen points.
    CGPoint locationInView(const UIView*) const;
    CGPoint previousLocationInView(const UIView*) const;
    CGPoint screenLocation() const { return m_location; }

    // Moves the touch on; only the touch delivery does this.
    void update(CGPoint screenLocation, UITouchPhase, double timestamp);

private:
    CGPoint m_location;
    CGPoint m_previousLocation;
    UITouchPhase m_phase { UITouchPhaseBegan };
    double m_timestamp { 0 };
    RefPtr<UIView> m_view;
    int m_tapCount { 1 };
};
