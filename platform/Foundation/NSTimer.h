#pragma once

#include <objc/objc.h>

#include <functional>

// A timer on the main run loop. A repeating timer fires at its start plus
// whole multiples of its interval (it does not drift with late firing); an
// interval of zero or less is taken as 0.1 ms, as Foundation does.
class NSTimer final : public NSObject {
    OBJC_CLASS(NSTimer)
public:
    // Sends `selector` (one argument, the timer) to `target`; the target is
    // kept alive by the timer, as Foundation keeps it.
    static RefPtr<NSTimer> scheduledTimerWithTimeInterval(double interval, NSObject* target, objc::SEL selector, StrongId userInfo, bool repeats);
    static RefPtr<NSTimer> scheduledTimerWithTimeInterval(double interval, bool repeats, std::function<void(NSTimer*)> block);

    void invalidate();
    void fire();
    bool isValid() const { return m_valid; }
    bool repeats() const { return m_repeats; }
    double timeInterval() const { return m_interval; }
    NSObject* userInfo() const { return m_userInfo.get(); }
    // Monotonic time of the next firing.
    double fireTime() const { return m_fireTime; }

private:
    friend class NSRunLoop;
    NSTimer() = default;
    double m_interval { 0 };
    double m_fireTime { 0 };
    bool m_repeats { false };
    bool m_valid { true };
    RefPtr<NSObject> m_target;
    objc::SEL m_selector { nullptr };
    StrongId m_userInfo;
    std::function<void(NSTimer*)> m_block;
};
