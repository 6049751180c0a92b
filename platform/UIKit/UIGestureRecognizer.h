#pragma once

#include <CoreGraphics/CGGeometry.h>
#include <objc/objc.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class UITouch;
class UIView;

enum UIGestureRecognizerState : int {
    UIGestureRecognizerStatePossible = 0,
    UIGestureRecognizerStateBegan = 1,
    UIGestureRecognizerStateChanged = 2,
    UIGestureRecognizerStateEnded = 3,
    UIGestureRecognizerStateCancelled = 4,
    UIGestureRecognizerStateFailed = 5,
    UIGestureRecognizerStateRecognized = UIGestureRecognizerStateEnded,
};

// The base of the gesture recognisers, as UIKit's. A recogniser watches the
// touches that land on its view or the view's subviews and moves through the
// states of a fixed table: a discrete gesture (a tap, a swipe) goes from
// possible to recognized or failed, a continuous one (a long press, a pan)
// through began, changed and ended or cancelled. Each move to began,
// changed, recognized/ended or cancelled sends the action to every target,
// with the recogniser as the argument.
//
// The gesture environment arbitrates between the recognisers of one touch:
// one that begins or recognises makes the others still possible fail (unless
// either side declines, see canPreventGestureRecognizer), and a recogniser
// that must wait for another to fail (requireGestureRecognizerToFail) holds
// its success until that one has failed, or fails itself if that one
// succeeds. There are no delegates.
class UIGestureRecognizer : public NSObject {
    OBJC_CLASS(UIGestureRecognizer)
public:
    UIGestureRecognizer() = default;
    UIGestureRecognizer(NSObject* target, objc::SEL action);
    ~UIGestureRecognizer() override;
    // `initWithTarget:action:` for recognisers made by `alloc`; answers self.
    StrongId initWithTarget(NSObject* target, objc::SEL action);

    // Targets are not kept alive, as in UIKit: a target is usually the view
    // (or an ancestor, or its controller) that holds the recogniser, and
    // keeping it would make a cycle. They are weak references, so a target
    // that has gone away is skipped rather than messaged.
    void addTarget(NSObject* target, objc::SEL action);
    void removeTarget(NSObject* target, objc::SEL action);
    // A C++ target, for recognisers UIKit makes for its own views.
    void addHandler(std::function<void(UIGestureRecognizer&)>);
    // The actions its live targets are sent, for tools that show what a touch reached.
    std::vector<objc::SEL> actions() const;

    UIGestureRecognizerState state() const { return m_state; }
    bool isEnabled() const { return m_enabled; }
    // Disabling a recogniser in the middle of a gesture cancels or fails it.
    void setEnabled(bool);
    // Whether recognising takes the touch away from the view (which then
    // gets touchesCancelled), as by default in UIKit.
    bool cancelsTouchesInView() const { return m_cancelsTouchesInView; }
    void setCancelsTouchesInView(bool cancels) { m_cancelsTouchesInView = cancels; }

    UIView* view() const { return m_view; }
    // Only UIView's addGestureRecognizer and removeGestureRecognizer (and
    // its destructor) call this. Leaving its view ends the recogniser's
    // gesture quietly: its targets hear nothing more.
    void setView(UIView*);

    // This recogniser succeeds only after `other` has failed.
    void requireGestureRecognizerToFail(UIGestureRecognizer* other);
    const std::vector<RefPtr<UIGestureRecognizer>>& failureRequirements() const { return m_failureRequirements; }

    // Where the finger is (or was last), in the view's coordinates; a null
    // view means screen points.
    CGPoint locationInView(const UIView*) const;

    // The word a dump uses for this kind: "tap", "doubletap", "longpress",
    // "swipe-up", ...; empty for recognisers views make for themselves.
    virtual std::string kindName() const { return "gesture"; }

    // Whether this recogniser, on succeeding, makes `other` fail, and whether
    // it lets `other` make it fail. Both must agree for one to prevent the
    // other.
    virtual bool canPreventGestureRecognizer(const UIGestureRecognizer&) const { return true; }
    virtual bool canBePreventedByGestureRecognizer(const UIGestureRecognizer&) const { return true; }

    // The state table: which moves a recogniser may make. A move back to
    // possible is the reset that follows every finished gesture.
    static bool isTransitionAllowed(UIGestureRecognizerState from, UIGestureRecognizerState to);

    // The touch as it reaches the recogniser (the gesture environment calls these).
    virtual void touchesBegan(UITouch*) { }
    virtual void touchesMoved(UITouch*) { }
    virtual void touchesEnded(UITouch*) { }
    virtual void touchesCancelled(UITouch*);

protected:
    // Asks for a move of the state table; a move the table does not allow
    // is refused (false). Success may be held back by a failure requirement.
    bool setState(UIGestureRecognizerState);
    // Back to a fresh start after a finished gesture.
    virtual void reset() { }

    // Runs `work` once after `delay` on the run loop, unless the recogniser
    // is reset first. One such timer at a time.
    void startTimer(double delay, std::function<void()> work);
    void stopTimer();

private:
    friend class UIGestureEnvironment;
    struct Target {
        WeakPtr<NSObject> object;
        objc::SEL action;
    };

    void sendActions();
    void resetState();

    UIGestureRecognizerState m_state { UIGestureRecognizerStatePossible };
    // A success held back until the failure requirements have failed.
    UIGestureRecognizerState m_pendingState { UIGestureRecognizerStatePossible };
    bool m_enabled { true };
    bool m_cancelsTouchesInView { true };
    UIView* m_view { nullptr };
    CGPoint m_location {};
    std::vector<Target> m_targets;
    std::vector<std::function<void(UIGestureRecognizer&)>> m_handlers;
    std::vector<RefPtr<UIGestureRecognizer>> m_failureRequirements;
    uint64_t m_timer { 0 };
};
