#pragma once

#include <objc/objc.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// MobileTimer's countdown timer: one per device. Its fire time is counted in
// seconds since 1 January 2001 (the reference date), the time base the clock
// app uses; a paused timer keeps the time that was left and starts counting
// it down again on `resume`.
class TimerManager final : public NSObject {
    OBJC_CLASS(TimerManager)
public:
    enum State : long long {
        Stopped = 1,
        Paused = 2,
        Running = 3,
    };

    ~TimerManager() override;
    static RefPtr<TimerManager> sharedManager();

    long long state() const { return m_state; }
    double fireTime() const { return m_fireTime; }
    std::string defaultSound() const { return "<default>"; }
    void scheduleAt(double fireTime, const std::string& sound);
    void pause();
    void resume();
    void cancel();

    // What is left to count down: until the fire time while running, as
    // frozen while paused, nothing while stopped.
    double remainingTime() const;
    const std::string& sound() const { return m_sound; }
    // The messages received, in order ("schedule", "pause", "resume", "cancel").
    const std::vector<std::string>& commands() const { return m_commands; }

    // The world's own changes, which are not commands.
    void setRunning(double remaining);
    void setPaused(double remaining);
    void setStopped();

    // Told after every change of state (the lock screen shows a running timer).
    void setStateDidChangeHandler(std::function<void()> handler) { m_didChange = std::move(handler); }

private:
    void run(double fireTime);
    void stop();
    void cancelRing();
    void stateDidChange();

    State m_state { Stopped };
    double m_fireTime { 0 };
    double m_pausedRemaining { 0 };
    std::string m_sound;
    std::vector<std::string> m_commands;
    uint64_t m_ringToken { 0 };
    std::function<void()> m_didChange;
};
