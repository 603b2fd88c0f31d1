#!/usr/bin/env bash
# Installs the Debian packages fleetcmd needs (when missing) and builds it.
# Usage: scripts/setup.sh [build-dir] [extra cmake arguments...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build}
shift || true

packages=(g++ cmake ninja-build pkg-config libjsoncpp-dev libsqlite3-dev libgtest-dev libgmock-dev
          libbenchmark-dev libxlsxwriter-dev libminizip-dev libedit-dev help2man tmux
          qt6-base-dev fonts-wqy-microhei)  # the last two: the desktop program and its Chinese font
"$root/scripts/install-packages.sh" "${packages[@]}"
# The gateway's networking: standalone Asio, headers only, without the Boost
# packages it recommends.
"$root/scripts/install-packages.sh" --no-recommends libasio-dev
# The MQTT broker two gateway nodes route requests through (its test starts one on loopback).
"$root/scripts/install-packages.sh" --no-recommends mosquitto

# ccache, when the machine has it, shares compiled objects between build trees.
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
cmake -S "$root" -B "$build" -G Ninja "${launcher[@]}" "$@" >/dev/null
cmake --build "$build" -j"$(nproc)"
