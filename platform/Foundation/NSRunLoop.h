#pragma once

#include <objc/objc.h>

#include <cstdint>
#include <functional>
#include <vector>

class NSTimer;

// The main run loop on the virtual clock. Everything that happens later goes
// through it, in time order: timers, delayed calls, work queued on dispatch
// queues and the ends of animations. Events due at the same moment run in the
// order they were scheduled. Nothing here reads the real time.
class NSRunLoop final : public NSObject {
    OBJC_CLASS(NSRunLoop)
public:
    static NSRunLoop* mainRunLoop();
    static NSRunLoop* currentRunLoop() { return mainRunLoop(); }

    // Runs `work` once at the given monotonic time (or now, if that is past).
    uint64_t scheduleAt(double monotonicTime, std::function<void()> work);
    uint64_t scheduleAfter(double delay, std::function<void()> work);
    void cancel(uint64_t token);

    void addTimer(NSTimer*);
    void removeTimer(NSTimer*);

    // Runs every event due up to `monotonicTime`, moving the clock to each in
    // turn, and leaves the clock there.
    void runUntil(double monotonicTime);
    void advance(double seconds);
    // Runs what is due now (work queued without delay), without moving time.
    void runPending();

    size_t pendingEventCount() const { return m_heap.size(); }
    uint64_t firedEventCount() const { return m_fired; }
    // The time of the next event, or infinity.
    double nextEventTime() const;

    // Work to run after every event the loop fires, in the order added: UIKit
    // uses it to lay out the views that asked for it, as at the end of a
    // turn of the phone's run loop.
    void addAfterEventObserver(std::function<void()>);

private:
    struct Event {
        double time;
        uint64_t sequence;
        uint64_t token;
        NSTimer* timer; // retained while queued; null for one-shot work
    };
    struct Later {
        bool operator()(const Event& a, const Event& b) const
        {
            return a.time != b.time ? a.time > b.time : a.sequence > b.sequence;
        }
    };

    void push(Event);
    void fire(const Event&);

    std::vector<Event> m_heap;
    std::vector<std::pair<uint64_t, std::function<void()>>> m_work; // token -> one-shot work
    uint64_t m_nextSequence { 1 };
    uint64_t m_fired { 0 };
    std::vector<std::function<void()>> m_afterEventObservers;
};
