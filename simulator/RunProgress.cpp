#include "RunProgress.h"

#include <Foundation/NSRunLoop.h>

#include <cmath>
#include <cstdio>
#include <unistd.h>

namespace sim {

// Quiet for runs shorter than this, then refreshed this often.
static constexpr std::chrono::milliseconds quietFor { 3000 };
static constexpr std::chrono::milliseconds refreshEvery { 250 };

static std::string durationText(double seconds)
{
    long total = std::lround(std::max(0.0, seconds));
    long days = total / 86400, hours = total % 86400 / 3600, minutes = total % 3600 / 60, rest = total % 60;
    if (days)
        return std::to_string(days) + "d" + (hours ? " " + std::to_string(hours) + "h" : "");
    if (hours)
        return std::to_string(hours) + "h" + (minutes ? " " + std::to_string(minutes) + "m" : "");
    if (minutes)
        return std::to_string(minutes) + "m" + (rest ? " " + std::to_string(rest) + "s" : "");
    return std::to_string(rest) + "s";
}

static std::string thousands(double value)
{
    std::string digits = std::to_string(std::llround(std::max(0.0, value)));
    for (int i = static_cast<int>(digits.size()) - 3; i > 0; i -= 3)
        digits.insert(static_cast<size_t>(i), ",");
    return digits;
}

std::string RunProgress::line(const std::string& what, double done, double total, double eventsPerSecond)
{
    return what + ": " + durationText(done) + " of " + durationText(total) + ", " + thousands(eventsPerSecond) + " events/s";
}

RunProgress::RunProgress(std::string what, double start, double end)
    : m_what(std::move(what))
    , m_start(start)
    , m_end(end)
    , m_terminal(isatty(STDERR_FILENO))
    , m_began(Clock::now())
    , m_lastShown(m_began)
    , m_firstEventCount(NSRunLoop::mainRunLoop()->firedEventCount())
{
}

RunProgress::~RunProgress()
{
    if (m_shown)
        std::fprintf(stderr, "\r\033[K");
}

void RunProgress::update(double now)
{
    if (!m_terminal)
        return;
    auto wall = Clock::now();
    if (wall - m_began < quietFor || wall - m_lastShown < refreshEvery)
        return;
    m_lastShown = wall;
    m_shown = true;
    double seconds = std::chrono::duration<double>(wall - m_began).count();
    double events = static_cast<double>(NSRunLoop::mainRunLoop()->firedEventCount() - m_firstEventCount);
    std::fprintf(stderr, "\r\033[K%s", line(m_what, now - m_start, m_end - m_start, events / seconds).c_str());
    std::fflush(stderr);
}

}
