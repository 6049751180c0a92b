#!/usr/bin/env bash
# Measures what the extension costs the host and writes docs/performance.md:
#   scripts/perf.sh [BUILD_DIR]      (default build-perf)
# Builds kavelin-bench in Release, runs every benchmark (about five minutes on
# two cores) and turns the results into the page. Not part of scripts/test.sh:
# the test suite only runs a quick smoke of the program.
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build-perf}
jobs=${KV_JOBS:-2}

cmake -S . -B "$dir" -G Ninja -DKV_BENCH=ON -DCMAKE_BUILD_TYPE=Release > "$dir.configure.log" 2>&1 \
  || { cat "$dir.configure.log"; exit 1; }
cmake --build "$dir" -j "$jobs" --target kavelin-bench

results="$dir/performance.json"
# Five repetitions of each short benchmark give a median and a spread; the long
# runs (a virtual week, start-up) fix their own single run.
"$dir/bin/kavelin-bench" \
  --benchmark_repetitions=5 \
  --benchmark_report_aggregates_only=true \
  --benchmark_min_time=0.2 \
  --benchmark_out_format=json \
  --benchmark_out="$results"

python3 scripts/performance-report.py "$results" "$dir/CMakeCache.txt" docs/performance.md
echo "wrote docs/performance.md (raw results in $results)"
