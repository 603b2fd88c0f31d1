#!/usr/bin/env bash
# The gateway, the simulated terminals and the host as three processes on
# loopback: fleetcmd-gw on free ports, fleetcmd-termsim with the built-in
# fleet's terminals, then fleetcmd-host --net gw://127.0.0.1:PORT runs an
# acceptance script and must print what it prints with --net loop.
# Usage: processes_test.sh BIN-DIR SCRIPT
set -uo pipefail
bin=$1
script=$2
work=$(mktemp -d)
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null; done
  for pid in "${pids[@]}"; do wait "$pid" 2>/dev/null; done
  rm -rf "$work"
}
trap cleanup EXIT
fail() { echo "FAIL: $*"; [ -f "$work/gw.log" ] && tail -20 "$work/gw.log"; exit 1; }

# Waits up to 20 s for a condition, looking every tenth of a second.
await() {
  for _ in $(seq 200); do "$@" && return 0; sleep 0.1; done
  return 1
}

"$bin/fleetcmd-gw" --terminal-port 0 --control-port 0 --log-level info 2>"$work/gw.log" &
pids+=($!)
await grep -q "control port" "$work/gw.log" || fail "the gateway did not start"
terminal_port=$(sed -n 's/.*terminal port \([0-9]*\),.*/\1/p' "$work/gw.log" | head -1)
control_port=$(sed -n 's/.*control port \([0-9]*\) .*/\1/p' "$work/gw.log" | head -1)

"$bin/fleetcmd-termsim" --port "$terminal_port" --log-level info 2>"$work/termsim.log" &
pids+=($!)
await grep -q "terminals for" "$work/termsim.log" || fail "the terminals did not start"
devices=$(sed -n 's/.* \([0-9]*\) terminals for.*/\1/p' "$work/termsim.log" | head -1)

# The gateway's counters over its control port.
authenticated() {
  exec 3<>"/dev/tcp/127.0.0.1/$control_port" || return 1
  echo '{"op":"counters"}' >&3
  local line
  read -r -t 5 line <&3
  exec 3<&-
  [[ $line =~ \"authenticated\":$devices[,}] ]]
}
await authenticated || fail "the terminals did not all authenticate"

expected=$("$bin/fleetcmd-host" --net loop --fixed-time --script "$script" 2>&1)
actual=$("$bin/fleetcmd-host" --net "gw://127.0.0.1:$control_port" --fixed-time --script "$script" 2>&1)
if [ "$actual" != "$expected" ]; then
  diff <(echo "$expected") <(echo "$actual") | head -40
  fail "the script printed other lines through the gateway"
fi
echo "same lines through fleetcmd-gw and fleetcmd-termsim: $(basename "$script")"
