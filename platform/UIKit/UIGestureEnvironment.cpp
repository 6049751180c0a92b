#include "UIGestureEnvironment.h"

#include "UIView.h"

#include <Foundation/NSRunLoop.h>

#include <algorithm>

UIGestureEnvironment& UIGestureEnvironment::shared()
{
    static auto* environment = new UIGestureEnvironment();
    return *environment;
}

static bool isSuccess(UIGestureRecognizerState from, UIGestureRecognizerState to)
{
    return from == UIGestureRecognizerStatePossible && (to == UIGestureRecognizerStateBegan || to == UIGestureRecognizerStateRecognized);
}

static bool isFinished(UIGestureRecognizerState state)
{
    return state == UIGestureRecognizerStateEnded || state == UIGestureRecognizerStateCancelled || state == UIGestureRecognizerStateFailed;
}

std::vector<RefPtr<UIGestureRecognizer>> UIGestureEnvironment::collectRecognizers(UIView* hitView) const
{
    std::vector<RefPtr<UIGestureRecognizer>> result;
    for (UIView* view = hitView; view; view = view->superview()) {
        for (auto& recognizer : view->gestureRecognizers()) {
            if (!recognizer->isEnabled())
                continue;
            bool prevented = false;
            for (UIView* below = hitView; below != view && !prevented; below = below->superview())
                prevented = below->preventsAncestorGestureRecognizer(*recognizer);
            if (!prevented)
                result.push_back(recognizer);
        }
    }
    return result;
}

bool UIGestureEnvironment::isActive(const UIGestureRecognizer& recognizer) const
{
    return std::find(m_active.begin(), m_active.end(), &recognizer) != m_active.end();
}

bool UIGestureEnvironment::takesTouches(const UIGestureRecognizer& recognizer) const
{
    if (!recognizer.m_enabled || !recognizer.m_view || !isActive(recognizer))
        return false;
    switch (recognizer.m_state) {
    case UIGestureRecognizerStatePossible:
        return recognizer.m_pendingState == UIGestureRecognizerStatePossible;
    case UIGestureRecognizerStateBegan:
    case UIGestureRecognizerStateChanged:
        return true;
    default:
        return false;
    }
}

template<typename Deliver>
void UIGestureEnvironment::deliver(UITouch& touch, Deliver&& deliverTo)
{
    auto participants = m_participants;
    for (auto& recognizer : participants) {
        if (!takesTouches(*recognizer))
            continue;
        recognizer->m_location = touch.screenLocation();
        deliverTo(*recognizer);
    }
}

void UIGestureEnvironment::touchBegan(UITouch& touch, UIView* view)
{
    RefPtr<UITouch> protect(&touch);
    if (m_touchDown && m_touch)
        touchCancelled(*m_touch);

    auto participants = collectRecognizers(view);
    // A gesture left waiting by an earlier touch (a double tap between its
    // taps) fails when the finger comes down where it cannot see it. One
    // that has succeeded and only waits for another to fail keeps waiting:
    // that failure lets it through.
    std::vector<RefPtr<UIGestureRecognizer>> elsewhere;
    for (auto& recognizer : m_active) {
        if (recognizer->m_pendingState == UIGestureRecognizerStatePossible
            && std::find(participants.begin(), participants.end(), recognizer) == participants.end())
            elsewhere.push_back(recognizer);
    }
    failUndecided(elsewhere);
    resetFinished();

    m_touch = &touch;
    m_touchView = view;
    m_touchDown = true;
    m_touchClaimed = false;
    m_participants = participants;
    for (auto& recognizer : participants) {
        if (!isActive(*recognizer))
            m_active.push_back(recognizer);
    }
    deliver(touch, [&](UIGestureRecognizer& recognizer) { recognizer.touchesBegan(&touch); });
    if (m_touchView && !m_touchClaimed)
        m_touchView->touchesBegan(&touch);
}

void UIGestureEnvironment::touchMoved(UITouch& touch)
{
    if (!m_touchDown)
        return;
    RefPtr<UITouch> protect(&touch);
    deliver(touch, [&](UIGestureRecognizer& recognizer) { recognizer.touchesMoved(&touch); });
    if (m_touchView && !m_touchClaimed)
        m_touchView->touchesMoved(&touch);
}

void UIGestureEnvironment::touchEnded(UITouch& touch) { finishTouch(touch, false); }

void UIGestureEnvironment::touchCancelled(UITouch& touch) { finishTouch(touch, true); }

void UIGestureEnvironment::finishTouch(UITouch& touch, bool cancelled)
{
    if (!m_touchDown)
        return;
    RefPtr<UITouch> protect(&touch);
    deliver(touch, [&](UIGestureRecognizer& recognizer) {
        if (cancelled)
            recognizer.touchesCancelled(&touch);
        else
            recognizer.touchesEnded(&touch);
    });
    RefPtr<UIView> view = std::move(m_touchView);
    bool claimed = m_touchClaimed;
    m_touchDown = false;
    m_participants.clear();
    if (view && !claimed) {
        if (cancelled)
            view->touchesCancelled(&touch);
        else
            view->touchesEnded(&touch);
    }
    resetFinished();
}

void UIGestureEnvironment::cancelAll()
{
    if (m_touchDown && m_touch)
        touchCancelled(*RefPtr<UITouch>(m_touch));
    failUndecided(m_active);
    resetFinished();
}

UIGestureEnvironment::Requirement UIGestureEnvironment::failureRequirementStatus(const UIGestureRecognizer& recognizer) const
{
    bool waiting = false;
    for (auto& required : recognizer.m_failureRequirements) {
        // A recogniser that takes no part in the gesture cannot succeed: as
        // good as failed.
        if (!required->m_enabled || !isActive(*required))
            continue;
        switch (required->m_state) {
        case UIGestureRecognizerStateFailed:
            break;
        case UIGestureRecognizerStatePossible:
            waiting = true;
            break;
        default:
            return Requirement::Blocked;
        }
    }
    return waiting ? Requirement::Waiting : Requirement::Satisfied;
}

// Fails every undecided recogniser of the list (one in the middle of a
// continuous gesture is cancelled). All of them change state before anyone
// is told, so that a failure cannot let another of them succeed first.
void UIGestureEnvironment::failUndecided(const std::vector<RefPtr<UIGestureRecognizer>>& recognizers)
{
    std::vector<std::pair<RefPtr<UIGestureRecognizer>, UIGestureRecognizerState>> changed;
    for (auto& recognizer : recognizers) {
        UIGestureRecognizerState from = recognizer->m_state;
        if (from == UIGestureRecognizerStatePossible)
            recognizer->m_state = UIGestureRecognizerStateFailed;
        else if (from == UIGestureRecognizerStateBegan || from == UIGestureRecognizerStateChanged)
            recognizer->m_state = UIGestureRecognizerStateCancelled;
        else
            continue;
        recognizer->m_pendingState = UIGestureRecognizerStatePossible;
        recognizer->stopTimer();
        changed.emplace_back(recognizer, from);
    }
    for (auto& [recognizer, from] : changed)
        recognizerDidChangeState(*recognizer, from);
}

void UIGestureEnvironment::excludeOthers(UIGestureRecognizer& winner)
{
    std::vector<RefPtr<UIGestureRecognizer>> losers;
    for (auto& other : m_active) {
        if (other.get() != &winner && other->m_state == UIGestureRecognizerStatePossible
            && winner.canPreventGestureRecognizer(*other) && other->canBePreventedByGestureRecognizer(winner))
            losers.push_back(other);
    }
    failUndecided(losers);
}

void UIGestureEnvironment::claimTouch(UIGestureRecognizer& recognizer)
{
    if (!m_touchDown || m_touchClaimed || !recognizer.m_cancelsTouchesInView)
        return;
    if (std::find(m_participants.begin(), m_participants.end(), &recognizer) == m_participants.end())
        return;
    m_touchClaimed = true;
    if (m_touchView)
        RefPtr<UIView>(m_touchView)->touchesCancelled(m_touch.get());
}

void UIGestureEnvironment::resolveWaiting()
{
    auto active = m_active;
    for (auto& recognizer : active) {
        if (recognizer->m_state != UIGestureRecognizerStatePossible || recognizer->m_pendingState == UIGestureRecognizerStatePossible)
            continue;
        Requirement status = failureRequirementStatus(*recognizer);
        if (status == Requirement::Waiting)
            continue;
        UIGestureRecognizerState to = status == Requirement::Satisfied ? recognizer->m_pendingState : UIGestureRecognizerStateFailed;
        recognizer->m_pendingState = UIGestureRecognizerStatePossible;
        recognizer->m_state = to;
        if (to == UIGestureRecognizerStateFailed)
            recognizer->stopTimer();
        recognizerDidChangeState(*recognizer, UIGestureRecognizerStatePossible);
    }
}

void UIGestureEnvironment::recognizerDidChangeState(UIGestureRecognizer& recognizer, UIGestureRecognizerState from)
{
    RefPtr<UIGestureRecognizer> protect(&recognizer);
    ++m_depth;
    UIGestureRecognizerState state = recognizer.m_state;
    if (isSuccess(from, state) && isActive(recognizer)) {
        excludeOthers(recognizer);
        claimTouch(recognizer);
    }
    if (state != UIGestureRecognizerStatePossible && state != UIGestureRecognizerStateFailed)
        recognizer.sendActions();
    if (state != UIGestureRecognizerStateChanged)
        resolveWaiting();
    --m_depth;
    resetFinished();
}

void UIGestureEnvironment::recognizerWasDisabled(UIGestureRecognizer& recognizer)
{
    if (isActive(recognizer))
        failUndecided({ RefPtr<UIGestureRecognizer>(&recognizer) });
}

void UIGestureEnvironment::recognizerLostView(UIGestureRecognizer& recognizer)
{
    if (!isActive(recognizer))
        return;
    recognizer.stopTimer();
    recognizer.m_pendingState = UIGestureRecognizerStatePossible;
    if (recognizer.m_state == UIGestureRecognizerStatePossible)
        recognizer.m_state = UIGestureRecognizerStateFailed;
    else if (recognizer.m_state == UIGestureRecognizerStateBegan || recognizer.m_state == UIGestureRecognizerStateChanged)
        recognizer.m_state = UIGestureRecognizerStateCancelled;
    settleLater();
}

void UIGestureEnvironment::settleLater()
{
    if (m_settleScheduled)
        return;
    m_settleScheduled = true;
    NSRunLoop::mainRunLoop()->scheduleAfter(0, [this] {
        m_settleScheduled = false;
        ++m_depth;
        resolveWaiting();
        --m_depth;
        resetFinished();
    });
}

// Finished recognisers start afresh once the finger is up and nothing is
// being decided any more.
void UIGestureEnvironment::resetFinished()
{
    if (m_touchDown || m_depth > 0)
        return;
    auto active = m_active;
    for (auto& recognizer : active) {
        if (isFinished(recognizer->m_state)) {
            std::erase(m_active, recognizer);
            recognizer->resetState();
        }
    }
}
