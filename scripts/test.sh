#!/usr/bin/env bash
# The whole test suite: builds fleetcmd with its tests and runs them with CTest.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh" "$root/build"
cd "$root/build"
ctest --output-on-failure -j"$(nproc)" "$@"
