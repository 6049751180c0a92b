#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

class NSObject;
namespace sim {
class Simulator;
}

// The phone the in-process benchmarks share: one host per process, booted at
// the lock screen with the extension loaded, as kavelin-sim boots it, with a
// typical morning on it (an alarm, a running timer, weather, music, a few
// events, reminders and notifications).
sim::Simulator& phone();
// Plays scenario lines against the shared phone; exits on a mistake.
void playOnPhone(const std::string& scenario);

NSObject* panel();
// A shared instance by class name (`sharedInstance`).
NSObject* sharedInstanceOf(const char* className);
// Sends a timer's selector as its timer would (the timer argument is unused).
void fireTimerSelector(NSObject* target, const char* selector);
// Runs work queued without delay and lays out views that asked for it, as the
// run loop does before the next frame.
void settleRunLoop();

// Counts operator new calls over the timed loop and reports them per iteration.
class AllocationsPerIteration {
public:
    explicit AllocationsPerIteration(benchmark::State&);
    ~AllocationsPerIteration();

private:
    benchmark::State& m_state;
    uint64_t m_before;
};

// How often a periodic task runs, in seconds, reported with its figure so
// that the report can scale a tick to a share of the core over an hour.
void reportPeriod(benchmark::State&, double seconds);
