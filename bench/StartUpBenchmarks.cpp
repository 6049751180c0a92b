// Start-up: what loading the extension adds to the host's launch. A host
// boots once per process, so each measurement is a fresh process (this
// program again, with --startup-probe) that boots the host with or without
// the extension and prints what each phase cost in CPU time.

#include "StartUpBenchmarks.h"

#include <BuildPaths.h>
#include <DeviceRoot.h>
#include <ExtensionLoader.h>

#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSFileManager.h>
#include <Foundation/NSLocale.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSTimeZone.h>
#include <Foundation/VirtualClock.h>
#include <UIKit/UIView.h>
#include <host/SimulatedHost.h>
#include <objc/objc.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <dlfcn.h>
#include <filesystem>
#include <vector>

static double cpuSeconds()
{
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

// The extension installs its hooks from its load-time initialisers, inside
// dlopen. This program's own MSHookMessageEx takes the place of the
// runtime's for the whole process (the extension binds to the first
// definition it finds, as it does to the counting operator new) and notes
// when the first hook began and the last one ended, so that installing the
// hooks can be told apart from the rest of loading.
static int s_hooks;
static double s_firstHookStart = -1;
static double s_lastHookEnd = -1;

void objc::MSHookMessageEx(objc::Class* cls, objc::SEL sel, objc::IMP replacement, objc::IMP* original, const std::type_info& signature)
{
    using Hook = void (*)(objc::Class*, objc::SEL, objc::IMP, objc::IMP*, const std::type_info&);
    static Hook runtimeHook = [] {
        auto hook = reinterpret_cast<Hook>(dlsym(RTLD_NEXT, "_ZN4objc15MSHookMessageExEPNS_5ClassEPKNS_8SelectorEPFvvEPS6_RKSt9type_info"));
        if (!hook) {
            fprintf(stderr, "kavelin-bench: the runtime's MSHookMessageEx is not where it was expected\n");
            std::abort();
        }
        return hook;
    }();
    double start = cpuSeconds();
    if (s_firstHookStart < 0)
        s_firstHookStart = start;
    runtimeHook(cls, sel, replacement, original, signature);
    s_lastHookEnd = cpuSeconds();
    ++s_hooks;
}

int runStartUpProbe(bool withExtension)
{
    BuildPaths paths = BuildPaths::locate();
    DeviceRoot root;
    if (auto error = root.open(""); !error.empty() || !(error = root.installBundle(paths.resourceBundle)).empty()) {
        fprintf(stderr, "kavelin-bench: %s\n", error.c_str());
        return 3;
    }
    NSFileManager::setDeviceRoot(root.path().string());
    NSLocale::setCurrentLocaleIdentifier("en_US");
    NSTimeZone::setDefaultTimeZoneName("UTC");
    if (auto start = NSDateFormatter::dateFromLocalISO8601String("2026-11-21T09:41:00"))
        VirtualClock::shared().setWallNow(start->timeIntervalSinceReferenceDate());
    SimulatedHost::Configuration configuration;
    configuration.artDirectory = paths.hostArt.string();
    SimulatedHost host(configuration);

    host.startProcess();
    double loadStart = cpuSeconds();
    if (withExtension) {
        if (auto error = ExtensionLoader::load(paths.extension); !error.empty()) {
            fprintf(stderr, "kavelin-bench: %s\n", error.c_str());
            return 3;
        }
    }
    double bootStart = cpuSeconds();
    host.boot();
    NSRunLoop::mainRunLoop()->runPending();
    UIView::layoutPendingViews();
    double bootEnd = cpuSeconds();

    double hooks = s_hooks ? s_lastHookEnd - s_firstHookStart : 0;
    printf("%.9f %.9f %d %.9f\n", bootStart - loadStart, hooks, s_hooks, bootEnd - bootStart);
    return 0;
}

namespace {

struct ProbeResult {
    double load { 0 };
    double hooks { 0 };
    int hookCount { 0 };
    double boot { 0 };
};

bool runProbe(bool withExtension, ProbeResult& result)
{
    std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    std::string command = "'" + self + "' --startup-probe " + (withExtension ? "with" : "without") + " 2>/dev/null";
    FILE* output = popen(command.c_str(), "r");
    if (!output)
        return false;
    int read = fscanf(output, "%lf %lf %d %lf", &result.load, &result.hooks, &result.hookCount, &result.boot);
    return pclose(output) == 0 && read == 4;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

// Seven fresh processes each way, alternating, and the median of each phase.
// The reported time is the extension's whole share of start-up: loading it
// (hooks included) and what it adds to the host's boot, which is mostly the
// panel's construction and first layout.
void BM_StartUp(benchmark::State& state)
{
    constexpr int runs = 7;
    for (auto _ : state) {
        std::vector<double> load, hooks, bootWith, bootWithout;
        int hookCount = 0;
        for (int run = 0; run < runs; ++run) {
            ProbeResult with, without;
            if (!runProbe(true, with) || !runProbe(false, without)) {
                state.SkipWithError("a start-up probe failed (run kavelin-bench --startup-probe with)");
                return;
            }
            load.push_back(with.load - with.hooks);
            hooks.push_back(with.hooks);
            hookCount = with.hookCount;
            bootWith.push_back(with.boot);
            bootWithout.push_back(without.boot);
        }
        double extension = median(load) + median(hooks) + median(bootWith) - median(bootWithout);
        state.SetIterationTime(extension);
        state.counters["load_s"] = median(load);
        state.counters["hooks_s"] = median(hooks);
        state.counters["hooks"] = hookCount;
        state.counters["bootWithExtension_s"] = median(bootWith);
        state.counters["bootWithoutExtension_s"] = median(bootWithout);
        state.counters["panel_s"] = median(bootWith) - median(bootWithout);
    }
}
BENCHMARK(BM_StartUp)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(1);

} // namespace
