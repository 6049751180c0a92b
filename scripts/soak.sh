#!/usr/bin/env bash
# Builds kavelin-sim (Release) and plays the seven-day soak scenario:
#   scripts/soak.sh [SEED] [BUILD_DIR]
# A broken rule prints FILE:LINE: soak: ... with the seed that replays it.
set -euo pipefail
cd "$(dirname "$0")/.."
seed=${1:-}
dir=${2:-build-soak-release}
scripts/build.sh "$dir" -DCMAKE_BUILD_TYPE=Release -DKV_BENCH=OFF -- kavelin-sim
scenario=tests/soak/seven-days.scenario
if [ -n "$seed" ]; then
  case $seed in *[!0-9]*) echo "the seed is a whole number, got '$seed'" >&2; exit 2;; esac
  played=$(mktemp --suffix=.scenario)
  trap 'rm -f "$played"' EXIT
  sed "s/^soak \(.*\)seed=[0-9]*/soak \1seed=$seed/" "$scenario" > "$played"
  scenario=$played
fi
time "$dir/bin/kavelin-sim" "$scenario" --out "$dir/soak-out"
