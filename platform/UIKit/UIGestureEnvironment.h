#pragma once

// Delivery of the one finger's touches to gesture recognisers and views, and
// the arbitration between recognisers. (Private to UIKit; UIApplication is
// its public face.)

#include "UIGestureRecognizer.h"
#include "UITouch.h"

#include <vector>

class UIGestureEnvironment {
public:
    static UIGestureEnvironment& shared();

    // A new touch on `view` (the hit view; null when the finger landed on
    // nothing), then its later phases.
    void touchBegan(UITouch&, UIView* view);
    void touchMoved(UITouch&);
    void touchEnded(UITouch&);
    void touchCancelled(UITouch&);
    bool isTouchDown() const { return m_touchDown; }

    // Ends everything in progress: the touch is cancelled and every gesture
    // still undecided fails.
    void cancelAll();

    enum class Requirement { Satisfied, Waiting, Blocked };
    Requirement failureRequirementStatus(const UIGestureRecognizer&) const;
    void recognizerDidChangeState(UIGestureRecognizer&, UIGestureRecognizerState from);
    // A disabled recogniser leaves its gesture, cancelled or failed.
    void recognizerWasDisabled(UIGestureRecognizer&);
    // A recogniser taken off its view (perhaps by the view's destructor)
    // leaves its gesture without a word; what that decides for the others
    // is settled on the run loop, outside whatever removed it.
    void recognizerLostView(UIGestureRecognizer&);

private:
    UIGestureEnvironment() = default;
    std::vector<RefPtr<UIGestureRecognizer>> collectRecognizers(UIView* hitView) const;
    bool isActive(const UIGestureRecognizer&) const;
    bool takesTouches(const UIGestureRecognizer&) const;
    void failUndecided(const std::vector<RefPtr<UIGestureRecognizer>>&);
    void excludeOthers(UIGestureRecognizer& winner);
    void resolveWaiting();
    void claimTouch(UIGestureRecognizer&);
    void finishTouch(UITouch&, bool cancelled);
    void resetFinished();
    void settleLater();

    template<typename Deliver>
    void deliver(UITouch&, Deliver&&);

    // Recognisers with a gesture in progress (from the current touch, or
    // from earlier ones that still wait: a double tap between its taps), in
    // the order they get touches: the hit view's first, then its ancestors'.
    std::vector<RefPtr<UIGestureRecognizer>> m_active;
    // The recognisers the current touch reaches.
    std::vector<RefPtr<UIGestureRecognizer>> m_participants;
    RefPtr<UIView> m_touchView;
    bool m_touchDown { false };
    // A recogniser has taken the current touch away from its view.
    bool m_touchClaimed { false };
    RefPtr<UITouch> m_touch;
    int m_depth { 0 };
    bool m_settleScheduled { false };
};
