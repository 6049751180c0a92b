#pragma once

#include "UISwipeGestureRecognizer.h"
#include "UITouch.h"

#include <CoreGraphics/CGGeometry.h>
#include <objc/objc.h>

#include <vector>

class UIView;
class UIWindow;

enum UIInterfaceOrientation : int {
    UIInterfaceOrientationUnknown = 0,
    UIInterfaceOrientationPortrait = 1,
    UIInterfaceOrientationPortraitUpsideDown = 2,
    UIInterfaceOrientationLandscapeRight = 3,
    UIInterfaceOrientationLandscapeLeft = 4,
};

// Posted by the application after the interface orientation has changed and
// its windows have taken the new screen size.
inline constexpr const char* UIApplicationDidChangeStatusBarOrientationNotification = "UIApplicationDidChangeStatusBarOrientationNotification";

inline bool UIInterfaceOrientationIsLandscape(int orientation)
{
    return orientation == UIInterfaceOrientationLandscapeLeft || orientation == UIInterfaceOrientationLandscapeRight;
}

// The application object: the interface orientation, the windows, and the
// door through which the finger's touches come in.
//
// Touches are delivered as UIKit delivers them: a touch coming down is
// hit-tested against the windows on screen, front to back; the gesture
// recognisers of the view it lands on and of that view's ancestors see it
// first, and the view (then its responder chain, where controls act) gets it
// unless a recogniser takes it. After every phase the views that asked for
// layout are laid out. The gestures below take no time on the clock except
// a long press, which runs the run loop for its duration.
class UIApplication : public NSObject {
    OBJC_CLASS(UIApplication)
public:
    UIApplication() = default;
    static UIApplication* sharedApplication();
    // The host's own application object (SpringBoard's) takes over; it keeps
    // the orientation of the one it replaces.
    static void setSharedApplication(RefPtr<UIApplication>);

    int statusBarOrientation() const { return m_statusBarOrientation; }
    void setStatusBarOrientation(int orientation);

    UIWindow* keyWindow() const;
    std::vector<UIWindow*> windows() const;

    // The front-most view under a point in screen points, or null.
    UIView* hitTest(CGPoint) const;

    // One phase of the finger at a screen point. Began starts a touch (one
    // already down is cancelled); the other phases continue it and are
    // ignored without one. Answers whether the touch is on a view.
    bool sendTouch(CGPoint, UITouchPhase);

    bool tapAt(CGPoint);
    bool doubleTapAt(CGPoint);
    bool longPressAt(CGPoint, double duration = 0.6);
    bool swipeAt(CGPoint, UISwipeGestureRecognizerDirection, double distance = 100);
    // Puts the finger down and moves it by dx, dy in small steps.
    bool dragAt(CGPoint, double dx, double dy);
    // A finger on the slider under the point takes its thumb to the value
    // (value-changed fires). False when no enabled slider is there.
    bool slideAt(CGPoint, float value);
    // The user turns a wheel of the picker under the point to a row (its
    // delegate hears of it). False when no picker is there or the row does
    // not exist.
    bool pickAt(CGPoint, long component, long row);

    // Cancels the touch in progress and lets every undecided gesture fail,
    // as when the system takes the screen away.
    void cancelTouches();

private:
    bool moveFinger(CGPoint from, CGPoint to);

    int m_statusBarOrientation { UIInterfaceOrientationPortrait };
    RefPtr<UITouch> m_touch;
    // The last touch to lift, for counting quick taps.
    double m_lastTouchEnd { -1 };
    CGPoint m_lastTouchLocation {};
    int m_lastTapCount { 0 };
};
