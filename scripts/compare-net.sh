#!/usr/bin/env bash
# Runs acceptance scripts through fleetcmd-host with another way to the
# terminals (--net MODE) and compares their lines with the expected ones of
# the simulated platform. Prints "same" or "differs" per script, and the
# difference of each that differs when -v is given.
# Usage: scripts/compare-net.sh [-v] MODE [build-dir] [script.fcs ...]
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
verbose=0
[[ ${1:-} == -v ]] && { verbose=1; shift; }
mode=${1:?usage: compare-net.sh [-v] MODE [build-dir] [script.fcs ...]}
shift
build=$root/build
if [[ $# -gt 0 && -d $1 ]]; then build=$1; shift; fi
host=$build/app/fleetcmd-host
scripts=("$@")
[[ ${#scripts[@]} -eq 0 ]] && scripts=("$root"/tests/scripts/*.fcs)
cd "$root"
differ=0
for script in "${scripts[@]}"; do
  expected=${script%.fcs}.out
  actual=$("$host" --net "$mode" --fixed-time --script "$script" 2>&1)
  if [[ "$actual" == "$(cat "$expected")" ]]; then
    echo "same     $(basename "$script")"
  else
    echo "differs  $(basename "$script")"
    differ=$((differ + 1))
    [[ $verbose == 1 ]] && diff <(cat "$expected") <(echo "$actual") | head -40
  fi
done
echo "$differ of ${#scripts[@]} differ"
[[ $differ == 0 ]]
