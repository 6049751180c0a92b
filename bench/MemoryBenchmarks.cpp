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

// One virtual hour of a phone in use that leaves the world as it found it,
// as a phone spends most hours: the display comes on for two minutes, the
// alarm is set again and a short timer starts (it runs out later in the
// hour), a song plays for ten seconds, the phone is turned and turned back, a
// call comes and goes, the charger is plugged in and out, the battery overlay
// is opened and closed, then the display goes off for the rest of the hour.
// The notification store is left alone: the simulated host keeps a record of
// every removal (the simulator's dump lists them), which would grow the heap
// on its own.
std::string busyHour(int hour)
{
    std::string song = "Song " + std::to_string(hour % 10);
    return "display on\n"
           "alarm tomorrow 07:00\n"
           "timer running 20m\n"
           "music artist=\"The Band\" song=\""
        + song + "\" album=\"Album\" artwork=#3a7bd5 playing=yes track=" + std::to_string(hour % 10 + 1) + "/12\n"
        + "advance 10s\n"
          "music none\n"
          "rotate landscape\n"
          "advance 5s\n"
          "rotate portrait\n"
          "call incoming\n"
          "advance 5s\n"
          "call none\n"
          "battery ac=yes\n"
          "advance 30s\n"
          "battery ac=no\n"
          "tap #_amperoContainerView\n"
          "advance 2s\n"
          "home\n"
          "advance 1m\n"
          "display off\n"
          "advance 58m8s\n";
}

// The live heap after the first virtual hour and after a week (168 hours) of
// such hours, with the panel's and the overlays' timers running throughout
// and the ten-second table reload whenever the display is on.
void BM_Memory_Week(benchmark::State& state)
{
    panel();
    playOnPhone("timer stopped\nmusic none\nadvance 1s\n");
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
        // The first week shows each weekday's name for the first time, and
        // the text measurement caches keep each new text; a second week brings
        // no new text, so it tells growth with time from caches filling once.
        for (int hour = 168; hour < 336; ++hour)
            playOnPhone(busyHour(hour));
        int64_t afterTwoWeeks = AllocationCounter::liveBytes();
        state.counters["liveBytes_1h"] = double(afterHour);
        state.counters["liveBytes_24h"] = double(afterDay);
        state.counters["liveBytes_168h"] = double(afterWeek);
        state.counters["liveBytes_336h"] = double(afterTwoWeeks);
        state.counters["growthBytes_1h_to_168h"] = double(afterWeek - afterHour);
        state.counters["growthBytes_168h_to_336h"] = double(afterTwoWeeks - afterWeek);
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
