// UIView's block animations, played on the virtual clock.

#include "UIView.h"

#include <Foundation/NSRunLoop.h>
#include <Foundation/VirtualClock.h>

#include <algorithm>
#include <memory>

namespace {

struct AnimatedChange {
    RefPtr<UIView> view;
    CGRect fromFrame;
    double fromAlpha;
    CGRect toFrame;
    double toAlpha;
};

struct Animation {
    double start;
    double duration;
    std::vector<AnimatedChange> changes;
};

// Animations whose duration has not yet passed, oldest first. A renderer asks
// them what a view looks like in flight.
std::vector<std::shared_ptr<Animation>>& runningAnimations()
{
    static auto* animations = new std::vector<std::shared_ptr<Animation>>();
    return *animations;
}

// Animation blocks being run now, innermost last: changes made by a block
// belong to the innermost one.
std::vector<Animation*>& openBlocks()
{
    static auto* blocks = new std::vector<Animation*>();
    return *blocks;
}

struct InFlight {
    const AnimatedChange* change { nullptr };
    double progress { 1 };
};

// The newest unfinished animation of the view, and how far it has gone.
InFlight inFlight(const UIView* view)
{
    double now = VirtualClock::shared().monotonic();
    auto& running = runningAnimations();
    for (auto it = running.rbegin(); it != running.rend(); ++it) {
        const Animation& animation = **it;
        if (now >= animation.start + animation.duration)
            continue;
        for (auto& change : animation.changes) {
            if (change.view.get() == view)
                return { &change, std::clamp((now - animation.start) / animation.duration, 0.0, 1.0) };
        }
    }
    return {};
}

double interpolate(double from, double to, double progress) { return from + (to - from) * progress; }

} // namespace

void UIView::willChangeAnimatableProperty()
{
    auto& blocks = openBlocks();
    if (blocks.empty())
        return;
    auto& changes = blocks.back()->changes;
    bool known = std::any_of(changes.begin(), changes.end(), [&](auto& change) { return change.view.get() == this; });
    if (!known)
        changes.push_back({ RefPtr<UIView>(this), m_frame, m_alpha, m_frame, m_alpha });
}

void UIView::animateWithDuration(double duration, std::function<void()> animations, std::function<void(bool)> completion)
{
    animateWithDuration(duration, 0, 0, std::move(animations), std::move(completion));
}

void UIView::animateWithDuration(double duration, double delay, unsigned, std::function<void()> animations,
    std::function<void(bool)> completion)
{
    duration = std::max(0.0, duration);
    delay = std::max(0.0, delay);
    auto animation = std::make_shared<Animation>(Animation { VirtualClock::shared().monotonic() + delay, duration, {} });
    openBlocks().push_back(animation.get());
    if (animations)
        animations();
    openBlocks().pop_back();

    auto& changes = animation->changes;
    for (auto& change : changes) {
        change.toFrame = change.view->m_frame;
        change.toAlpha = change.view->m_alpha;
    }
    std::erase_if(changes, [](auto& change) { return change.fromFrame == change.toFrame && change.fromAlpha == change.toAlpha; });
    if (!changes.empty())
        runningAnimations().push_back(animation);

    // UIKit calls the completion after the animation, never from inside
    // animateWithDuration, even when there was nothing to animate.
    NSRunLoop::mainRunLoop()->scheduleAfter(delay + duration, [animation, completion = std::move(completion)] {
        std::erase(runningAnimations(), animation);
        if (completion)
            completion(true);
    });
}

// In flight, a view moves from its value before the block towards its
// current value (a change made later without animation retargets it).
CGRect UIView::presentationFrame() const
{
    auto [change, p] = inFlight(this);
    if (!change)
        return m_frame;
    return CGRectMake(interpolate(change->fromFrame.origin.x, m_frame.origin.x, p),
        interpolate(change->fromFrame.origin.y, m_frame.origin.y, p),
        interpolate(change->fromFrame.size.width, m_frame.size.width, p),
        interpolate(change->fromFrame.size.height, m_frame.size.height, p));
}

double UIView::presentationAlpha() const
{
    auto [change, p] = inFlight(this);
    return change ? interpolate(change->fromAlpha, m_alpha, p) : m_alpha;
}
