// The host's main thread is precious: these measure what the extension costs
// it. Run `build/bin/kavelin-bench` (Google Benchmark flags apply).

#include "AllocationCounter.h"

#include <Simulator.h>
#include <scenario/ScenarioParser.h>

#include <Foundation/NSDate.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSRunLoop.h>
#include <UIKit/UITableView.h>
#include <host/HostWorld.h>
#include <objc/objc.h>

#include <benchmark/benchmark.h>
#include <filesystem>
#include <memory>

namespace {

// One booted phone per process, shared by the benchmarks: the host at the
// lock screen with the extension loaded (or not), as kavelin-sim boots it.
sim::Simulator& phone()
{
    static sim::Simulator* simulator = [] {
        auto out = std::filesystem::temp_directory_path() / "kavelin-bench-out";
        auto* simulator = new sim::Simulator(out, "");
        if (auto error = simulator->prepare(); !error.empty()) {
            fprintf(stderr, "kavelin-bench: %s\n", error.c_str());
            std::exit(3);
        }
        auto parsed = sim::ScenarioParser::parseText("alarm tomorrow 07:00\ntimer running 2h\nboot\nadvance 6s\n", "<bench>");
        if (simulator->play(parsed.commands) != sim::ExitSuccess)
            std::exit(3);
        return simulator;
    }();
    return *simulator;
}

NSObject* panel()
{
    phone();
    static NSObject* shared = objc::send<NSObject*>(objc::objc_getClass("KVView"), "sharedInstance");
    return shared;
}

void BM_PanelFrameTick(benchmark::State& state)
{
    NSObject* view = panel();
    objc::SEL tick = objc::sel_registerName("frameUpdateTimer:");
    uint64_t before = AllocationCounter::allocations();
    for (auto _ : state)
        objc::send(view, tick, static_cast<NSObject*>(nullptr));
    state.counters["allocations/tick"] = benchmark::Counter(double(AllocationCounter::allocations() - before) / double(state.iterations()));
}
BENCHMARK(BM_PanelFrameTick);

void BM_PanelSecondTick(benchmark::State& state)
{
    NSObject* view = panel();
    objc::SEL tick = objc::sel_registerName("visibilityHandlerAndTimeUpdateTimer:");
    for (auto _ : state)
        objc::send(view, tick, static_cast<NSObject*>(nullptr));
}
BENCHMARK(BM_PanelSecondTick);

void BM_AlarmTimerFeederTick(benchmark::State& state)
{
    panel();
    NSObject* overlay = objc::send<NSObject*>(objc::objc_getClass("KVTimeDisplayView"), "sharedInstance");
    objc::SEL tick = objc::sel_registerName("updateTimer:");
    for (auto _ : state)
        objc::send(overlay, tick, static_cast<NSObject*>(nullptr));
}
BENCHMARK(BM_AlarmTimerFeederTick);

// The battery overlay's one-second tick while a time left is counted down
// (the draining text is formatted and set every second), and its 30-second
// sample (registry reads, the bolt and six texts).
NSObject* batteryOverlay()
{
    panel();
    static NSObject* overlay = objc::send<NSObject*>(objc::objc_getClass("KVAmperoDisplayView"), "sharedInstance");
    return overlay;
}

void BM_AmperoSecondTick(benchmark::State& state)
{
    NSObject* overlay = batteryOverlay();
    objc::SEL tick = objc::sel_registerName("AmperoBatterySecondsUpdate:");
    // A count-down longer than any run, so that every tick writes the draining text.
    objc::send(overlay, objc::sel_registerName("setTimeLeft:"), 2000000000);
    for (auto _ : state)
        objc::send(overlay, tick, static_cast<NSObject*>(nullptr));
}
BENCHMARK(BM_AmperoSecondTick);

void BM_AmperoSample(benchmark::State& state)
{
    NSObject* overlay = batteryOverlay();
    objc::SEL sample = objc::sel_registerName("AmperoUpdate:");
    for (auto _ : state)
        objc::send(overlay, sample, static_cast<NSObject*>(nullptr));
}
BENCHMARK(BM_AmperoSample);

// Everything the run loop does in one virtual hour of the idle lock screen
// with the panel on it: ten frame ticks and one second tick a second, the
// alarm feeder, the schedule reload every ten seconds, the host's own timers.
void BM_LockScreenVirtualHour(benchmark::State& state)
{
    panel();
    for (auto _ : state)
        NSRunLoop::mainRunLoop()->advance(3600);
}
BENCHMARK(BM_LockScreenVirtualHour)->Unit(benchmark::kMillisecond)->Iterations(3);

// Live heap after the first virtual hour and after a whole day: equal when
// nothing leaks across a long run.
void BM_MemoryOverADay(benchmark::State& state)
{
    panel();
    for (auto _ : state) {
        NSRunLoop::mainRunLoop()->advance(3600);
        int64_t afterOneHour = AllocationCounter::liveBytes();
        NSRunLoop::mainRunLoop()->advance(23 * 3600);
        int64_t afterOneDay = AllocationCounter::liveBytes();
        state.counters["liveBytesAfter1h"] = double(afterOneHour);
        state.counters["liveBytesAfter24h"] = double(afterOneDay);
        state.counters["growthBytes"] = double(afterOneDay - afterOneHour);
    }
}
BENCHMARK(BM_MemoryOverADay)->Unit(benchmark::kMillisecond)->Iterations(1);

// A thousand openings and closings of an overlay, each with its fades on
// the virtual clock, against the same thousand virtual seconds with the
// overlay left alone: an overlay is made once and reused, so the heap grows
// no more over the visits than over the idle time (both a few KB at most,
// from what the panel's timers keep).
void BM_OverlayThousandVisits(benchmark::State& state)
{
    panel();
    NSObject* overlay = objc::send<NSObject*>(objc::objc_getClass("KVAmperoDisplayView"), "sharedInstance");
    objc::SEL show = objc::sel_registerName("show");
    objc::SEL hide = objc::sel_registerName("hide");
    auto visit = [&] {
        objc::send(overlay, show);
        NSRunLoop::mainRunLoop()->advance(0.5);
        objc::send(overlay, hide);
        NSRunLoop::mainRunLoop()->advance(0.5);
    };
    visit();
    for (auto _ : state) {
        int64_t before = AllocationCounter::liveBytes();
        NSRunLoop::mainRunLoop()->advance(1000);
        int64_t idleGrowth = AllocationCounter::liveBytes() - before;
        before = AllocationCounter::liveBytes();
        for (int i = 0; i < 1000; ++i)
            visit();
        int64_t growth = AllocationCounter::liveBytes() - before;
        state.counters["idleGrowthBytes"] = double(idleGrowth);
        state.counters["visitsGrowthBytes"] = double(growth);
    }
}
BENCHMARK(BM_OverlayThousandVisits)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_SettingsRead(benchmark::State& state)
{
    phone();
    NSObject* settings = objc::send<NSObject*>(objc::objc_getClass("KVSettings"), "sharedInstance");
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

// 500 events, 500 reminders and 2,000 notifications from 100 apps.
void fillBusyPhone()
{
    HostWorld& world = HostWorld::shared();
    double now = NSDate::date()->timeIntervalSinceReferenceDate();
    for (int i = 0; i < 500; ++i) {
        world.addEvent({ "Event " + std::to_string(i), now + 600 + i * 1200.0, now + 1200 + i * 1200.0, "Calendar", std::nullopt, std::nullopt });
        world.addReminder({ "Reminder " + std::to_string(i), now + 300 + i * 1100.0, "Calendar", false, std::nullopt });
    }
    for (int app = 0; app < 100; ++app) {
        std::string identifier = "com.example.app" + std::to_string(app);
        world.installApp({ identifier, "App " + std::to_string(app), "#3a7bd5" });
        for (int row = 0; row < 20; ++row) {
            HostWorld::Notification notification;
            notification.app = identifier;
            notification.title = "Sender " + std::to_string(row);
            notification.message = "Message " + std::to_string(row);
            notification.date = now - row * 60.0;
            world.deliverNotification(notification);
        }
    }
}

// A busy phone: 500 events, 500 reminders and 2,000 notifications from 100
// apps. One iteration is a forced reload (the whole pipeline, through the
// global queue, the calendar store's queue and the main queue) and the
// table's layout; only the rows on screen get cells.
void BM_ScheduleReloadBusyPhone(benchmark::State& state)
{
    NSObject* view = panel();
    // Google Benchmark calls this more than once: the phone is filled once.
    static bool filled = false;
    if (!filled) {
        filled = true;
        fillBusyPhone();
    }
    NSObject* controller = objc::object_getIvar(view, "_tableViewController").get();
    auto* table = dynamic_cast<UITableView*>(objc::send<NSObject*>(controller, "tableView"));
    // The host's own work on 2,000 deliveries (its lock screen lists each one
    // anew) leaves the heap full of freed blocks; one reload before timing
    // pays for tidying them, so that the iterations measure the reload alone.
    objc::send(controller, "forceReloadTableViewData");
    NSRunLoop::mainRunLoop()->runPending();
    UIView::layoutPendingViews();
    size_t cellsBefore = table ? table->cellsRequested() : 0;
    for (auto _ : state) {
        objc::send(controller, "forceReloadTableViewData");
        NSRunLoop::mainRunLoop()->runPending();
        if (table)
            table->layoutIfNeeded();
    }
    size_t cells = table ? table->cellsRequested() - cellsBefore : 0;
    state.counters["cells/reload"] = double(cells) / double(state.iterations());
    long rows = 0;
    for (long section = 0; table && section < table->numberOfSections(); ++section)
        rows += table->numberOfRowsInSection(section);
    state.counters["rows"] = double(rows);
}
BENCHMARK(BM_ScheduleReloadBusyPhone)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
