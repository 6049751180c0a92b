#!/usr/bin/env bash
# Plays the built-in demo and frames its screenshots for the README's gallery (docs/gallery/).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh build -- kavelin-sim Kavelin
shots=$(mktemp -d)
trap 'rm -rf "$shots"' EXIT
build/bin/kavelin-sim --out "$shots" >/dev/null
rm -rf docs/gallery
python3 scripts/gallery.py "$shots" docs/gallery README.md
echo "docs/gallery: $(ls docs/gallery/*.png | wc -l) pictures, shown in README.md"
