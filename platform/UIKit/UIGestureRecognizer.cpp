#include "UIGestureRecognizer.h"

#include "UIGestureEnvironment.h"
#include "UIKitMessaging.h"
#include "UIView.h"

#include <Foundation/NSRunLoop.h>

#include <algorithm>
#include <utility>

OBJC_IMPLEMENT_CLASS(UIGestureRecognizer, NSObject)
{
    c.method<&UIGestureRecognizer::initWithTarget>("initWithTarget:action:");
    c.method<&UIGestureRecognizer::addTarget>("addTarget:action:");
    c.method<&UIGestureRecognizer::removeTarget>("removeTarget:action:");
    c.method<&UIGestureRecognizer::view>("view");
    c.method<&UIGestureRecognizer::isEnabled>("isEnabled");
    c.method<&UIGestureRecognizer::setEnabled>("setEnabled:");
    c.method<&UIGestureRecognizer::requireGestureRecognizerToFail>("requireGestureRecognizerToFail:");
    c.method<&UIGestureRecognizer::locationInView>("locationInView:");
    c.allocatable();
}

UIGestureRecognizer::UIGestureRecognizer(NSObject* target, objc::SEL action) { addTarget(target, action); }

UIGestureRecognizer::~UIGestureRecognizer() { stopTimer(); }

StrongId UIGestureRecognizer::initWithTarget(NSObject* target, objc::SEL action)
{
    addTarget(target, action);
    return StrongId(this);
}

void UIGestureRecognizer::addTarget(NSObject* target, objc::SEL action)
{
    if (!target || !action)
        return;
    m_targets.push_back({ target, action });
}

void UIGestureRecognizer::removeTarget(NSObject* target, objc::SEL action)
{
    std::erase_if(m_targets, [&](const Target& entry) { return (!target || entry.object.get() == target) && (!action || entry.action == action); });
}

void UIGestureRecognizer::addHandler(std::function<void(UIGestureRecognizer&)> handler)
{
    if (handler)
        m_handlers.push_back(std::move(handler));
}

void UIGestureRecognizer::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    if (!enabled)
        UIGestureEnvironment::shared().recognizerWasDisabled(*this);
}

void UIGestureRecognizer::setView(UIView* view)
{
    m_view = view;
    if (!view)
        UIGestureEnvironment::shared().recognizerLostView(*this);
}

void UIGestureRecognizer::requireGestureRecognizerToFail(UIGestureRecognizer* other)
{
    if (!other || other == this)
        return;
    if (std::find(m_failureRequirements.begin(), m_failureRequirements.end(), other) == m_failureRequirements.end())
        m_failureRequirements.push_back(RefPtr<UIGestureRecognizer>(other));
}

CGPoint UIGestureRecognizer::locationInView(const UIView* view) const
{
    return view ? view->convertPointFromView(m_location, nullptr) : m_location;
}

bool UIGestureRecognizer::isTransitionAllowed(UIGestureRecognizerState from, UIGestureRecognizerState to)
{
    constexpr int count = 6;
    // Rows: from; columns: to (possible, began, changed, ended, cancelled, failed).
    static constexpr bool table[count][count] = {
        /* possible  */ { false, true, false, true, false, true },
        /* began     */ { false, false, true, true, true, false },
        /* changed   */ { false, false, true, true, true, false },
        /* ended     */ { true, false, false, false, false, false },
        /* cancelled */ { true, false, false, false, false, false },
        /* failed    */ { true, false, false, false, false, false },
    };
    if (from < 0 || from >= count || to < 0 || to >= count)
        return false;
    return table[from][to];
}

bool UIGestureRecognizer::setState(UIGestureRecognizerState state)
{
    // A recogniser whose success is held back has decided; it only waits.
    if (!isTransitionAllowed(m_state, state) || m_pendingState != UIGestureRecognizerStatePossible)
        return false;
    auto& environment = UIGestureEnvironment::shared();
    UIGestureRecognizerState from = m_state;
    if (from == UIGestureRecognizerStatePossible && (state == UIGestureRecognizerStateBegan || state == UIGestureRecognizerStateRecognized)) {
        switch (environment.failureRequirementStatus(*this)) {
        case UIGestureEnvironment::Requirement::Waiting:
            m_pendingState = state;
            return true;
        case UIGestureEnvironment::Requirement::Blocked:
            state = UIGestureRecognizerStateFailed;
            break;
        case UIGestureEnvironment::Requirement::Satisfied:
            break;
        }
    }
    RefPtr<UIGestureRecognizer> protect(this);
    m_state = state;
    if (state != UIGestureRecognizerStateBegan && state != UIGestureRecognizerStateChanged)
        stopTimer();
    environment.recognizerDidChangeState(*this, from);
    return true;
}

void UIGestureRecognizer::touchesCancelled(UITouch*)
{
    if (m_state == UIGestureRecognizerStateBegan || m_state == UIGestureRecognizerStateChanged)
        setState(UIGestureRecognizerStateCancelled);
    else
        setState(UIGestureRecognizerStateFailed);
}

void UIGestureRecognizer::sendActions()
{
    RefPtr<UIGestureRecognizer> protect(this);
    auto targets = m_targets;
    auto handlers = m_handlers;
    for (auto& target : targets) {
        // Kept alive for the action, which may let go of it.
        if (RefPtr<NSObject> object = target.object.get())
            UIKitMessaging::sendAction(object.get(), target.action, this);
    }
    for (auto& handler : handlers)
        handler(*this);
}

void UIGestureRecognizer::resetState()
{
    stopTimer();
    m_state = UIGestureRecognizerStatePossible;
    m_pendingState = UIGestureRecognizerStatePossible;
    reset();
}

void UIGestureRecognizer::startTimer(double delay, std::function<void()> work)
{
    stopTimer();
    RefPtr<UIGestureRecognizer> protect(this);
    m_timer = NSRunLoop::mainRunLoop()->scheduleAfter(delay, [this, protect, work = std::move(work)] {
        m_timer = 0;
        work();
    });
}

void UIGestureRecognizer::stopTimer()
{
    // Cancelling drops the timer's reference to this recogniser: clear the
    // token first.
    if (uint64_t token = std::exchange(m_timer, 0))
        NSRunLoop::mainRunLoop()->cancel(token);
}

std::vector<objc::SEL> UIGestureRecognizer::actions() const
{
    std::vector<objc::SEL> list;
    for (const Target& target : m_targets) {
        if (target.object)
            list.push_back(target.action);
    }
    return list;
}
