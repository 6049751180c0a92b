// Memory over long runs. The live heap is what operator new holds (the C++
// objects of the host, the platform and the extension); the process's
// resident size is reported beside it for scale.

#include "AllocationCounter.h"
#include "BenchmarkPhone.h"

#include <Foundation/NSRunLoop.h>
#include <objc/objc.h>

#include <fstream>
#include <string>
#include <unistd.h>

namespace {

int64_t residentBytes()
{
    std::ifstream statm("/proc/self/statm");
    long long pages = 0, resident = 0;
    statm >> pages >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

// One virtual hour of a phone in use that leaves the world as it found it:
// the alarm set again and a short timer that runs out, a song change, the
// phone turned and turned back, a call, the charger plugged in and out, the
// display off and on again, the battery overlay opened and closed. The
// notification store is left alone: the simulated host keeps a record of
// every removal (the simulator's dump lists them), which would grow the heap
// on its own.
std::string busyHour(int hour)
{
    std::string song = "Song " + std::to_string(hour % 10);
    return "alarm tomorrow 07:00\n"
           "timer running 20m\n"
           "music artist=\"The Band\" song=\""
        + song + "\" album=\"Album\" artwork=#3a7bd5 playing=yes track=" + std::to_string(hour % 10 + 1) + "/12\n"
        + "advance 10m\n"
          "rotate landscape\n"
          "advance 5m\n"
          "rotate portrait\n"
          "call incoming\n"
          "advance 30s\n"
          "call none\n"
          "advance 10m\n"
          "battery ac=yes\n"
          "advance 10m\n"
          "battery ac=no\n"
          "display off\n"
          "advance 10m\n"
          "display on\n"
          "tap #_amperoContainerView\n"
          "advance 2s\n"
          "home\n"
          "advance 14m28s\n";
}

// The live heap after the first virtual hour and after a week (168 hours) of
// busy hours, with the panel's timers and the ten-second table reload running
// throughout.
void BM_Memory_Week(benchmark::State& state)
{
    panel();
    playOnPhone("timer stopped\nadvance 1s\n");
    for (auto _ : state) {
        playOnPhone(busyHour(0));
        int64_t afterHour = AllocationCounter::liveBytes();
        int64_t residentAfterHour = residentBytes();
        int64_t afterDay = 0;
        for (int hour = 1; hour < 168; ++hour) {
            playOnPhone(busyHour(hour));
            if (hour == 23)
                afterDay = AllocationCounter::liveBytes();
        }
        int64_t afterWeek = AllocationCounter::liveBytes();
        state.counters["liveBytes_1h"] = double(afterHour);
        state.counters["liveBytes_24h"] = double(afterDay);
        state.counters["liveBytes_168h"] = double(afterWeek);
        state.counters["growthBytes_1h_to_168h"] = double(afterWeek - afterHour);
        state.counters["residentBytes_1h"] = double(residentAfterHour);
        state.counters["residentBytes_168h"] = double(residentBytes());
    }
}
BENCHMARK(BM_Memory_Week)->Unit(benchmark::kSecond)->Iterations(1)->Repetitions(1);

// A thousand openings and closings of an overlay, each with its fades on
// the virtual clock, against the same thousand virtual seconds with the
// overlay left alone: an overlay is made once and reused, so the heap grows
// no more over the visits than over the idle time.
void BM_Memory_OverlayThousandVisits(benchmark::State& state)
{
    NSObject* overlay = sharedInstanceOf("KVAmperoDisplayView");
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
BENCHMARK(BM_Memory_OverlayThousandVisits)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(1);

} // namespace
