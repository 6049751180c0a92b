// The periodic work the extension adds to the host's main thread, one timer
// at a time: each benchmark is one firing of one repeating timer, as the run
// loop would fire it on the idle lock screen of the typical morning. The
// timers never stop, so each tick's cost divided by its period is a fixed
// share of the core for as long as the phone is on.

#include "BenchmarkPhone.h"

#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSRunLoop.h>
#include <objc/objc.h>

namespace {

void runTicks(benchmark::State& state, NSObject* target, const char* selector, double period)
{
    objc::SEL tick = objc::sel_registerName(selector);
    {
        AllocationsPerIteration allocations(state);
        for (auto _ : state)
            objc::send(target, tick, static_cast<NSObject*>(nullptr));
    }
    reportPeriod(state, period);
}

// 0.1 s: the panel's frame timer, which lays out only when the orientation
// changed (here it never does).
void BM_Tick_Panel_Frame(benchmark::State& state) { runTicks(state, panel(), "frameUpdateTimer:", 0.1); }
BENCHMARK(BM_Tick_Panel_Frame);

// 1 s: visibility, clock and date, battery summary, alarm line, sections.
void BM_Tick_Panel_Second(benchmark::State& state) { runTicks(state, panel(), "visibilityHandlerAndTimeUpdateTimer:", 1); }
BENCHMARK(BM_Tick_Panel_Second);

// 1 s: the alarm and timer overlay feeds the panel the next alarm and the
// running timer (an alarm object, a date format, calendar arithmetic).
void BM_Tick_AlarmTimerFeeder(benchmark::State& state)
{
    runTicks(state, sharedInstanceOf("KVTimeDisplayView"), "updateTimer:", 1);
}
BENCHMARK(BM_Tick_AlarmTimerFeeder);

// 1 s: the battery estimator's count-down, with a time left longer than any
// run so that every tick formats and sets the draining text.
void BM_Tick_AmperoCountDown(benchmark::State& state)
{
    NSObject* overlay = sharedInstanceOf("KVAmperoDisplayView");
    objc::send(overlay, objc::sel_registerName("setTimeLeft:"), 2000000000);
    runTicks(state, overlay, "AmperoBatterySecondsUpdate:", 1);
}
BENCHMARK(BM_Tick_AmperoCountDown);

// 0.5 s: the panel's music strip (now-playing texts, artwork, play/pause glyph).
void BM_Tick_MusicStrip(benchmark::State& state)
{
    runTicks(state, objc::object_getIvar(panel(), "_melodraView").get(), "updateTimer:", 0.5);
}
BENCHMARK(BM_Tick_MusicStrip);

// 0.5 s: the music overlay, which ticks from its first use on, shown or not.
void BM_Tick_MusicOverlay(benchmark::State& state)
{
    runTicks(state, sharedInstanceOf("KVMusicDisplayView"), "updateTimer:", 0.5);
}
BENCHMARK(BM_Tick_MusicOverlay);

// 10 s: the schedule timer. On the lock screen with the display on it
// reloads the table: reminders on a global queue, the calendar store's
// queue, then events, notifications, sections and the table on the main
// queue. One iteration runs the whole pipeline and the table's layout.
void BM_Tick_ScheduleReload(benchmark::State& state)
{
    NSObject* view = panel();
    objc::SEL tick = objc::sel_registerName("scheduleAndNotificationsUpdateTimer:");
    {
        AllocationsPerIteration allocations(state);
        for (auto _ : state) {
            objc::send(view, tick, static_cast<NSObject*>(nullptr));
            settleRunLoop();
        }
    }
    reportPeriod(state, 10);
}
BENCHMARK(BM_Tick_ScheduleReload);

// 30 s: the battery estimator's sample (registry reads, the bolt, six texts).
void BM_Tick_AmperoSample(benchmark::State& state) { runTicks(state, sharedInstanceOf("KVAmperoDisplayView"), "AmperoUpdate:", 30); }
BENCHMARK(BM_Tick_AmperoSample);

// "weatherUpdateRate" s (1,800 by default): the panel's weather line.
void BM_Tick_Panel_Weather(benchmark::State& state) { runTicks(state, panel(), "weatherUpdateTimer:", 1800); }
BENCHMARK(BM_Tick_Panel_Weather);

// Whole stretches of virtual time on the idle lock screen: every timer of
// the host and the extension that falls due, in time order, as the run loop
// fires them. These check the per-timer figures above against the real mix.
void runVirtualTime(benchmark::State& state, double seconds)
{
    panel();
    {
        AllocationsPerIteration allocations(state);
        for (auto _ : state)
            NSRunLoop::mainRunLoop()->advance(seconds);
    }
    reportPeriod(state, seconds);
}

void BM_VirtualTime_10s(benchmark::State& state) { runVirtualTime(state, 10); }
BENCHMARK(BM_VirtualTime_10s)->Unit(benchmark::kMicrosecond);

void BM_VirtualTime_30s(benchmark::State& state) { runVirtualTime(state, 30); }
BENCHMARK(BM_VirtualTime_30s)->Unit(benchmark::kMicrosecond);

// Two small pieces that many ticks use.
void BM_SettingsRead(benchmark::State& state)
{
    NSObject* settings = sharedInstanceOf("KVSettings");
    objc::SEL getter = objc::sel_registerName("militaryTime");
    for (auto _ : state)
        benchmark::DoNotOptimize(objc::send<bool>(settings, getter));
}
BENCHMARK(BM_SettingsRead);

void BM_DateFormat(benchmark::State& state)
{
    phone();
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat("EEEE, MMMM d");
    auto date = NSDate::date();
    for (auto _ : state)
        benchmark::DoNotOptimize(formatter->stringFromDate(date.get()));
}
BENCHMARK(BM_DateFormat);

} // namespace
