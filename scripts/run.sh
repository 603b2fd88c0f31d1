#!/usr/bin/env bash
# The main job: builds fleetcmd and runs the demo (a page sending to 250
# simulated devices), printing the result rows.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh" "$root/build"
exec "$root/build/app/fleetcmd-demo" "$@"
