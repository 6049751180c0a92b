#!/usr/bin/env bash
# Configures and builds one configuration: scripts/build.sh DIR [CMAKE OPTIONS...] [-- TARGETS...]
set -euo pipefail
cd "$(dirname "$0")/.."
dir=$1; shift
options=(); targets=()
while [ $# -gt 0 ]; do
  if [ "$1" = "--" ]; then shift; targets=("$@"); break; fi
  options+=("$1"); shift
done
cmake -S . -B "$dir" -G Ninja "${options[@]}" > "$dir.configure.log" 2>&1 || { cat "$dir.configure.log"; exit 1; }
if [ ${#targets[@]} -gt 0 ]; then
  cmake --build "$dir" --target "${targets[@]}"
else
  cmake --build "$dir"
fi
