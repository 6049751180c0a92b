#!/usr/bin/env bash
# Sets up, builds and starts the live preview: open the address it prints in a browser.
# Arguments go to kavelin-sim (a starting scenario, --port N, --root DIR).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
# The same configuration as scripts/demo.sh and the test command, only the two targets built.
scripts/build.sh build -DBUILD_TESTING=ON -DKV_BENCH=ON -- kavelin-sim Kavelin
exec build/bin/kavelin-sim --live --out kavelin-out "$@"
