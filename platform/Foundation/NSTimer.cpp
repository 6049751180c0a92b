#include "NSTimer.h"

#include "NSRunLoop.h"
#include "VirtualClock.h"

OBJC_IMPLEMENT_CLASS(NSTimer, NSObject)
{
    c.method<&NSTimer::invalidate>("invalidate");
    c.method<&NSTimer::fire>("fire");
    c.method<&NSTimer::isValid>("isValid");
    c.method<&NSTimer::timeInterval>("timeInterval");
}

static double effectiveInterval(double interval) { return interval > 0 ? interval : 0.0001; }

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
