#!/usr/bin/env bash
# Sets up, builds and runs every test: the normal build, then the whole suite
# again under AddressSanitizer and UndefinedBehaviorSanitizer (built with
# clang, which also builds the fuzzing harnesses for a short run each).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
jobs=$(nproc)

echo "== build"
scripts/build.sh build
echo "== tests"
ctest --test-dir build --output-on-failure -j "$jobs"

echo "== build (address and undefined-behaviour sanitizers)"
CC=clang CXX=clang++ scripts/build.sh build-asan -DKV_SANITIZE=ON -DKV_FUZZ=ON -DCMAKE_BUILD_TYPE=Debug
echo "== tests (sanitizers)"
# Leak detection is off for now: the process-lifetime objects (the panel, the
# overlays, their timers) hold each other in cycles by design, which
# LeakSanitizer reports; memory growth is measured by the benchmarks instead.
ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  ctest --test-dir build-asan --output-on-failure -j "$jobs"
