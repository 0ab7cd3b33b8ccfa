#!/usr/bin/env bash
# Installs what the build, the tests and the demo need on a Debian machine.
# Safe to run again: it only installs packages that are missing.
set -euo pipefail

packages=(
  cmake ninja-build g++ ccache pkg-config
  libgtest-dev libgmock-dev libbenchmark-dev nlohmann-json3-dev
  clang libclang-rt-14-dev
  g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
  wine wine64 xvfb xauth fonts-wine fonts-ipafont-gothic
  zip unzip python3
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done

if ((${#missing[@]})); then
  echo "setup: installing ${missing[*]}"
  sudo_cmd=()
  [ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
