#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace sim {

// Shows how far a long run of the virtual clock has got, on standard error
// when that is a terminal: after a few seconds of wall time, one line kept
// up to date with the virtual time reached and the events fired per second.
// The line is cleared when the run ends. Costs a clock read per call.
class RunProgress {
public:
    // `what` names the run ("advance 400d"); times are the virtual clock's monotonic seconds.
    RunProgress(std::string what, double start, double end);
    ~RunProgress();
    RunProgress(const RunProgress&) = delete;
    RunProgress& operator=(const RunProgress&) = delete;

    // `now` is the virtual time reached.
    void update(double now);

    // "advance 400d: 12d 3h of 400d, 41,200 events/s"
    static std::string line(const std::string& what, double done, double total, double eventsPerSecond);

private:
    using Clock = std::chrono::steady_clock;

    std::string m_what;
    double m_start;
    double m_end;
    bool m_terminal;
    Clock::time_point m_began;
    Clock::time_point m_lastShown;
    uint64_t m_firstEventCount;
    bool m_shown { false };
};

}
