#!/usr/bin/env bash
# Sets up, builds and plays kavelin-sim's built-in demo; the screenshots land in ./kavelin-out.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh build -DKV_BENCH=OFF -DBUILD_TESTING=OFF -- kavelin-sim Kavelin
build/bin/kavelin-sim --out kavelin-out "$@"
