#pragma once

// The one clock of the simulated device. Timers and delayed work run on the
// monotonic time (seconds since boot), which only the run loop advances; the
// wall clock (what NSDate answers) is the monotonic time plus an offset, so a
// change of the clock moves dates without disturbing timers, as on the phone.
class VirtualClock {
public:
    static VirtualClock& shared();

    double monotonic() const { return m_monotonic; }
    // Seconds since 1 January 2001 00:00 UTC, Foundation's reference date.
    double wallNow() const { return m_monotonic + m_wallOffset; }
    void setWallNow(double secondsSinceReferenceDate) { m_wallOffset = secondsSinceReferenceDate - m_monotonic; }

    // Only the run loop moves time forward.
    void advanceMonotonicTo(double monotonic)
    {
        if (monotonic > m_monotonic)
            m_monotonic = monotonic;
    }

    static constexpr double referenceDateSince1970 = 978307200.0;

private:
    VirtualClock() = default;
    double m_monotonic { 0 };
    double m_wallOffset { 0 };
};
