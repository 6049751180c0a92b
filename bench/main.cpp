// kavelin-bench: what the extension costs the host's main thread. Google
// Benchmark's flags apply; scripts/perf.sh runs it and writes
// docs/performance.md from the results.

#include "StartUpBenchmarks.h"

#include <benchmark/benchmark.h>
#include <string_view>

int main(int argc, char** argv)
{
    if (argc >= 2 && std::string_view(argv[1]) == "--startup-probe")
        return runStartUpProbe(argc >= 3 && std::string_view(argv[2]) == "with");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
