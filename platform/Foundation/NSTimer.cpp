#include "NSTimer.h"

#include "NSRunLoop.h"
#include "VirtualClock.h"

#include <cmath>
#include <limits>

OBJC_IMPLEMENT_CLASS(NSTimer, NSObject)
{
    c.method<&NSTimer::invalidate>("invalidate");
    c.method<&NSTimer::fire>("fire");
    c.method<&NSTimer::isValid>("isValid");
    c.method<&NSTimer::timeInterval>("timeInterval");
}

// Zero or negative intervals become 0.1 ms, as Foundation documents. An
// interval that is not a number gives a fire date that is never reached (it
// would otherwise poison the run loop's ordering of events).
static double effectiveInterval(double interval)
{
    if (std::isnan(interval))
        return std::numeric_limits<double>::infinity();
    return interval > 0 ? interval : 0.0001;
}

RefPtr<NSTimer> NSTimer::scheduledTimerWithTimeInterval(double interval, NSObject* target, objc::SEL selector, StrongId userInfo, bool repeats)
{
    auto timer = adoptRef(new NSTimer());
    timer->m_interval = effectiveInterval(interval);
    timer->m_repeats = repeats;
    timer->m_target = target;
    timer->m_selector = selector;
    timer->m_userInfo = std::move(userInfo);
    timer->m_fireTime = VirtualClock::shared().monotonic() + timer->m_interval;
    NSRunLoop::mainRunLoop()->addTimer(timer.get());
    return timer;
}

RefPtr<NSTimer> NSTimer::scheduledTimerWithTimeInterval(double interval, bool repeats, std::function<void(NSTimer*)> block)
{
    auto timer = adoptRef(new NSTimer());
    timer->m_interval = effectiveInterval(interval);
    timer->m_repeats = repeats;
    timer->m_block = std::move(block);
    timer->m_fireTime = VirtualClock::shared().monotonic() + timer->m_interval;
    NSRunLoop::mainRunLoop()->addTimer(timer.get());
    return timer;
}

void NSTimer::invalidate()
{
    if (!m_valid)
        return;
    m_valid = false;
    NSRunLoop::mainRunLoop()->removeTimer(this);
    m_target = nullptr;
    m_block = nullptr;
}

void NSTimer::fire()
{
    if (!m_valid)
        return;
    RefPtr<NSTimer> protect(this);
    if (m_block)
        m_block(this);
    else if (m_target)
        objc::send(m_target.get(), m_selector, static_cast<NSObject*>(this));
    if (!m_repeats)
        invalidate();
}
