#!/usr/bin/env bash
# The interactive prompt in a real terminal (tmux): Tab completion of commands
# and control ids, help, the device picker asking, an error, quit, and the history of an earlier run
# brought back with Up. Each step waits for the screen to show its result.
# Usage: prompt_tmux.sh HOST
set -u
host=$1
data=$(mktemp -d)
session=fleetcmd-prompt-$$
failed=0
trap 'tmux kill-session -t $session 2>/dev/null; rm -rf "$data"' EXIT

screen() { tmux capture-pane -p -t "$session"; }
# Waits until the screen holds the text (the terminal's answer is the handshake).
expect() {  # what, text
  for _ in $(seq 1 200); do
    if screen | grep -qF -- "$2"; then return 0; fi
    sleep 0.05
  done
  echo "FAIL: $1: the screen never showed '$2'; it shows:"
  screen | sed 's/^/  | /'
  failed=1
  return 1
}
start() {
  tmux new-session -d -s "$session" -x 160 -y 50 "LANG=C.UTF-8 $host --fixed-time --data $data; echo HOST-EXITED-\$?; sleep 30"
  expect "banner" "Type \`help\`" && expect "prompt" "fleetcmd>"
}

start || exit 1
tmux send-keys -t "$session" "fun" Tab
expect "command completed" "fleetcmd> funpage"
tmux send-keys -t "$session" Enter "device 1 12" Enter
tmux send-keys -t "$session" "get 420" Tab
expect "control id completed" "fleetcmd> get 4208"
tmux send-keys -t "$session" Enter
expect "completed line ran" "VALUE 4208"
tmux send-keys -t "$session" "help dev" Tab Enter
expect "help of one command" "makes a device current"
tmux send-keys -t "$session" "text 4167 hi" Enter "click 1602" Enter
expect "the picker asks" "devices>"
tmux send-keys -t "$session" "10001" Enter "run" Enter
expect "the chosen device is sent to" "ROW 1|"
tmux send-keys -t "$session" "frobnicate" Enter
expect "an error" "ERROR 8: unknown command frobnicate"
tmux send-keys -t "$session" "quit" Enter
expect "quit ends the host with status 1 after an error" "HOST-EXITED-1"
tmux kill-session -t "$session"

# A second run: the history of the first comes back, Ctrl-D leaves.
start || exit 1
tmux send-keys -t "$session" Up
expect "history kept between runs" "fleetcmd> quit"
tmux send-keys -t "$session" Up
expect "older history" "fleetcmd> frobnicate"
tmux send-keys -t "$session" C-u C-d
expect "Ctrl-D ends the host" "HOST-EXITED-0"
exit $failed
