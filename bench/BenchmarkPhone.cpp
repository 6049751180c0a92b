#include "BenchmarkPhone.h"

#include "AllocationCounter.h"

#include <Simulator.h>
#include <scenario/ScenarioParser.h>

#include <Foundation/NSRunLoop.h>
#include <UIKit/UIView.h>
#include <objc/objc.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

// Kept small: the schedule benchmarks add their own items on top of these.
static constexpr const char* typicalMorning = R"(alarm tomorrow 07:00
timer running 2h
battery level=0.76 ac=no
weather city="Cupertino" condition="Sunny" icon=sunny temp=21 high=24 low=12
music artist="The Band" song="First Song" album="Album" artwork=#3a7bd5 playing=yes track=1/12
event "Standup" start=+2h end=+2h15m
event "Lunch with Sam" start=+1d end=+1d1h location="Cafe"
reminder "Buy milk" due=+5h
reminder "Call the bank" due=+2d
notification com.apple.MobileSMS title="Sam" message="On my way"
notification com.apple.MobileSMS title="Alex" message="See you at noon"
notification com.apple.mobilemail title="Newsletter" message="This week's news"
boot
advance 6s
)";

static void play(sim::Simulator& simulator, const std::string& scenario, bool booted)
{
    // The parser wants acting commands after a boot in the same text: a
    // phone already booted gets one in front, which is dropped before playing.
    auto parsed = sim::ScenarioParser::parseText(booted ? "boot\n" + scenario : scenario, "<bench>");
    if (booted && parsed.ok())
        parsed.commands.erase(parsed.commands.begin());
    if (!parsed.ok() || simulator.play(parsed.commands) != sim::ExitSuccess) {
        fprintf(stderr, "kavelin-bench: cannot play:\n%s\n", scenario.c_str());
        std::exit(3);
    }
}

sim::Simulator& phone()
{
    static sim::Simulator* simulator = [] {
        auto out = std::filesystem::temp_directory_path() / "kavelin-bench-out";
        auto* simulator = new sim::Simulator(out, "");
        if (auto error = simulator->prepare(); !error.empty()) {
            fprintf(stderr, "kavelin-bench: %s\n", error.c_str());
            std::exit(3);
        }
        play(*simulator, typicalMorning, false);
        return simulator;
    }();
    return *simulator;
}

void playOnPhone(const std::string& scenario) { play(phone(), scenario, true); }

NSObject* panel()
{
    phone();
    static NSObject* shared = objc::send<NSObject*>(objc::objc_getClass("KVView"), "sharedInstance");
    return shared;
}

NSObject* sharedInstanceOf(const char* className)
{
    panel();
    return objc::send<NSObject*>(objc::objc_getClass(className), "sharedInstance");
}

void fireTimerSelector(NSObject* target, const char* selector)
{
    objc::send(target, objc::sel_registerName(selector), static_cast<NSObject*>(nullptr));
}

void settleRunLoop()
{
    NSRunLoop::mainRunLoop()->runPending();
    UIView::layoutPendingViews();
}

AllocationsPerIteration::AllocationsPerIteration(benchmark::State& state)
    : m_state(state)
    , m_before(AllocationCounter::allocations())
{
}

AllocationsPerIteration::~AllocationsPerIteration()
{
    double iterations = m_state.iterations() ? double(m_state.iterations()) : 1.0;
    m_state.counters["allocations"] = double(AllocationCounter::allocations() - m_before) / iterations;
}

void reportPeriod(benchmark::State& state, double seconds)
{
    state.counters["period_s"] = seconds;
}
