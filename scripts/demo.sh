#!/usr/bin/env bash
# Sets up, builds and plays kavelin-sim's built-in demo; the screenshots land in ./kavelin-out.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
# Only the two targets are built, but the configuration is left as the test
# command needs it (tests and benchmarks on), so the two commands can follow
# each other in one checkout in either order.
scripts/build.sh build -DBUILD_TESTING=ON -DKV_BENCH=ON -- kavelin-sim Kavelin
build/bin/kavelin-sim --out kavelin-out "$@"
