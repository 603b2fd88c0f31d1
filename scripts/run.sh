#!/usr/bin/env bash
# The main job: builds fleetcmd and runs the reference host. Without
# arguments it runs the built-in demo script; any arguments go to
# fleetcmd-host instead (--script FILE, --fixed-time, --lang FILE ...).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh" "$root/build"
if [ $# -eq 0 ]; then set -- --demo; fi
exec "$root/build/app/fleetcmd-host" "$@"
