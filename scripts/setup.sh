#!/usr/bin/env bash
# Installs the Debian 12 packages the build needs, when any is missing.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config clang libclang-rt-14-dev
  libicu-dev libplist-dev libcairo2-dev libpango1.0-dev fonts-inter librsvg2-bin
  nlohmann-json3-dev libgtest-dev libgmock-dev libbenchmark-dev python3
)

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
