#!/usr/bin/env bash
# Sets up, builds and runs every test: the normal build, then the whole suite
# again under AddressSanitizer and UndefinedBehaviorSanitizer (built with
# clang, which also builds the fuzzing harnesses for a short run each).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
jobs=$(nproc)

# Every configuration is stated, not inherited from the cache: a build folder
# configured by someone else (with tests off, say) must not make this run
# pass without testing. ctest fails when it finds no tests.
echo "== build"
scripts/build.sh build -DBUILD_TESTING=ON -DKV_BENCH=ON
echo "== tests"
ctest --test-dir build --output-on-failure --no-tests=error -j "$jobs"

echo "== build (address and undefined-behaviour sanitizers)"
CC=clang CXX=clang++ scripts/build.sh build-asan -DBUILD_TESTING=ON -DKV_SANITIZE=ON -DKV_FUZZ=ON -DCMAKE_BUILD_TYPE=Debug
echo "== tests (sanitizers)"
# With leak detection: what fontconfig keeps for the life of the process is
# suppressed in scripts/lsan.supp (see docs/fuzzing.md).
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  LSAN_OPTIONS=suppressions="$PWD/scripts/lsan.supp":print_suppressions=0 \
  ctest --test-dir build-asan --output-on-failure --no-tests=error -j "$jobs"
