#pragma once

#include <objc/objc.h>

#include <cstdint>

// The display's backlight and the lock screen's idle timer: while the lock
// screen is up and the display on, the display turns off after the dim
// interval unless something resets the timer. The interval is asked through
// the runtime (`defaultLockScreenDimInterval`) each time the timer starts,
// so that a replacement of that method decides it.
class SBBacklightController final : public NSObject {
    OBJC_CLASS(SBBacklightController)
public:
    ~SBBacklightController() override;
    static RefPtr<SBBacklightController> sharedInstance();

    double defaultLockScreenDimInterval() const { return 8.0; }
    bool screenIsOn() const { return m_screenOn; }
    bool screenIsOff() const { return !m_screenOn; }
    void resetLockScreenIdleTimer();

    // The host's own switches (the power button, a dim, an unlock).
    void turnOnScreen();
    void turnOffScreen();
    // Starts the idle timer again from now, or stops it when the lock screen
    // is not up or the display is off.
    void restartIdleTimer();
    int idleTimerResets() const { return m_idleTimerResets; }

private:
    void cancelIdleTimer();

    bool m_screenOn { true };
    int m_idleTimerResets { 0 };
    uint64_t m_idleTimerToken { 0 };
};
