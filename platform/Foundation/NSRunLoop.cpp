#include "NSRunLoop.h"

#include "NSTimer.h"
#include "VirtualClock.h"

#include <algorithm>
#include <limits>

OBJC_IMPLEMENT_CLASS(NSRunLoop, NSObject)
{
    c.classMethod<&NSRunLoop::mainRunLoop>("mainRunLoop");
    c.classMethod<&NSRunLoop::currentRunLoop>("currentRunLoop");
}

NSRunLoop* NSRunLoop::mainRunLoop()
{
    static NSRunLoop* loop = new NSRunLoop();
    return loop;
}

void NSRunLoop::push(Event event)
{
    m_heap.push_back(event);
    std::push_heap(m_heap.begin(), m_heap.end(), Later());
}

uint64_t NSRunLoop::scheduleAt(double monotonicTime, std::function<void()> work)
{
    double now = VirtualClock::shared().monotonic();
    uint64_t token = m_nextSequence++;
    m_work.emplace_back(token, std::move(work));
    push(Event { std::max(monotonicTime, now), token, token, nullptr });
    return token;
}

uint64_t NSRunLoop::scheduleAfter(double delay, std::function<void()> work)
{
    return scheduleAt(VirtualClock::shared().monotonic() + std::max(0.0, delay), std::move(work));
}

void NSRunLoop::cancel(uint64_t token)
{
    auto it = std::find_if(m_work.begin(), m_work.end(), [&](auto& entry) { return entry.first == token; });
    if (it != m_work.end())
        it->second = nullptr; // the queued event finds nothing to run
}

void NSRunLoop::addTimer(NSTimer* timer)
{
    timer->ref();
    push(Event { timer->m_fireTime, m_nextSequence++, 0, timer });
}

void NSRunLoop::removeTimer(NSTimer*)
{
    // The queued event stays in the heap and is dropped when it comes up,
    // because the timer is no longer valid.
}

double NSRunLoop::nextEventTime() const
{
    return m_heap.empty() ? std::numeric_limits<double>::infinity() : m_heap.front().time;
}

void NSRunLoop::fire(const Event& event)
{
    ++m_fired;
    if (NSTimer* timer = event.timer) {
        if (timer->isValid()) {
            timer->fire();
            if (timer->isValid() && timer->repeats()) {
                timer->m_fireTime = event.time + timer->m_interval;
                push(Event { timer->m_fireTime, m_nextSequence++, 0, timer });
                return; // the heap keeps the reference
            }
        }
        timer->deref();
        return;
    }
    // One-shot work: take it out first, since running it may schedule more.
    auto it = std::find_if(m_work.begin(), m_work.end(), [&](auto& entry) { return entry.first == event.token; });
    if (it == m_work.end())
        return;
    auto work = std::move(it->second);
    m_work.erase(it);
    if (work)
        work();
}

void NSRunLoop::runUntil(double monotonicTime)
{
    auto& clock = VirtualClock::shared();
    while (!m_heap.empty() && m_heap.front().time <= monotonicTime) {
        std::pop_heap(m_heap.begin(), m_heap.end(), Later());
        Event event = m_heap.back();
        m_heap.pop_back();
        clock.advanceMonotonicTo(event.time);
        fire(event);
        for (size_t i = 0; i < m_afterEventObservers.size(); ++i)
            m_afterEventObservers[i]();
    }
    clock.advanceMonotonicTo(monotonicTime);
}

void NSRunLoop::addAfterEventObserver(std::function<void()> observer) { m_afterEventObservers.push_back(std::move(observer)); }

void NSRunLoop::advance(double seconds) { runUntil(VirtualClock::shared().monotonic() + std::max(0.0, seconds)); }

void NSRunLoop::runPending() { runUntil(VirtualClock::shared().monotonic()); }
