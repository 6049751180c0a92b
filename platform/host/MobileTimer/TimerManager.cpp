#include "TimerManager.h"

#include "../HostShared.h"

#include <Foundation/NSRunLoop.h>
#include <Foundation/VirtualClock.h>

#include <algorithm>

OBJC_IMPLEMENT_CLASS(TimerManager, NSObject)
{
    c.classMethod<&TimerManager::sharedManager>("sharedManager");
    c.method<&TimerManager::state>("state");
    c.method<&TimerManager::fireTime>("fireTime");
    c.method<&TimerManager::defaultSound>("defaultSound");
    c.method<&TimerManager::scheduleAt>("scheduleAt:withSound:");
    c.method<&TimerManager::pause>("pause");
    c.method<&TimerManager::resume>("resume");
    c.method<&TimerManager::cancel>("cancel");
}

static double wallNow() { return VirtualClock::shared().wallNow(); }

TimerManager::~TimerManager() { cancelRing(); }

RefPtr<TimerManager> TimerManager::sharedManager()
{
    static auto* slot = new RefPtr<TimerManager>();
    return host::sharedInstanceIn(*slot);
}

double TimerManager::remainingTime() const
{
    switch (m_state) {
    case Running:
        return std::max(0.0, m_fireTime - wallNow());
    case Paused:
        return m_pausedRemaining;
    case Stopped:
        break;
    }
    return 0;
}

void TimerManager::scheduleAt(double fireTime, const std::string& sound)
{
    m_commands.push_back("schedule");
    m_sound = sound;
    run(fireTime);
}

void TimerManager::pause()
{
    m_commands.push_back("pause");
    if (m_state == Running)
        setPaused(remainingTime());
}

void TimerManager::resume()
{
    m_commands.push_back("resume");
    if (m_state == Paused)
        run(wallNow() + m_pausedRemaining);
}

void TimerManager::cancel()
{
    m_commands.push_back("cancel");
    stop();
}

void TimerManager::setRunning(double remaining) { run(wallNow() + std::max(0.0, remaining)); }

void TimerManager::setPaused(double remaining)
{
    cancelRing();
    m_state = Paused;
    m_pausedRemaining = std::max(0.0, remaining);
    // A paused timer keeps reporting the fire time it had when it paused.
    m_fireTime = wallNow() + m_pausedRemaining;
    stateDidChange();
}

void TimerManager::setStopped() { stop(); }

void TimerManager::run(double fireTime)
{
    cancelRing();
    m_state = Running;
    m_fireTime = fireTime;
    m_pausedRemaining = 0;
    // The ring is timed on the run loop; a later change of the wall clock
    // does not move it, as a countdown on the phone is not moved either.
    m_ringToken = NSRunLoop::mainRunLoop()->scheduleAfter(std::max(0.0, fireTime - wallNow()), [this] {
        m_ringToken = 0;
        stop();
    });
    stateDidChange();
}

void TimerManager::stop()
{
    cancelRing();
    m_state = Stopped;
    m_fireTime = 0;
    m_pausedRemaining = 0;
    stateDidChange();
}

void TimerManager::cancelRing()
{
    if (m_ringToken)
        NSRunLoop::mainRunLoop()->cancel(m_ringToken);
    m_ringToken = 0;
}

void TimerManager::stateDidChange()
{
    if (m_didChange)
        m_didChange();
}
