#!/usr/bin/env bash
# Installs the Debian 12 packages the build needs, when any is missing.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config clang libclang-rt-14-dev
  libicu-dev libplist-dev libcairo2-dev libpango1.0-dev fonts-inter librsvg2-bin
  libical-dev nlohmann-json3-dev libgtest-dev libgmock-dev libbenchmark-dev python3
  chromium
  libcpp-httplib-dev libpng-dev
)
# Node.js and npm drive the browser tests; a machine that has them from elsewhere keeps its own.
command -v node >/dev/null || packages+=(nodejs)
command -v npm >/dev/null || packages+=(npm)

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done

if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -q
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

# The browser tests' driver (Playwright, pinned in tests/browser/package-lock.json). It drives
# Debian's Chromium, so its own browser download is skipped.
browser_tests="$(dirname "$0")/../tests/browser"
if [ -f "$browser_tests/package-lock.json" ] && [ ! -d "$browser_tests/node_modules/playwright-core" ]; then
  echo "Installing the browser tests' driver (npm ci in tests/browser)"
  (cd "$browser_tests" && PLAYWRIGHT_SKIP_BROWSER_DOWNLOAD=1 npm ci --no-audit --no-fund --loglevel=error)
fi
