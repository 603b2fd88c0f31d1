#!/usr/bin/env bash
# fleetcmd-host's command line, case by case: exit status, which stream, and a
# text the output must hold. Usage: options_test.sh HOST
host=$1
failed=0
check() {  # description, expected status, stream (out|err), text, arguments...
  local what=$1 status=$2 stream=$3 text=$4
  shift 4
  local out err rc
  out=$("$host" "$@" 2>/tmp/fleetcmd-options.$$ </dev/null); rc=$?
  err=$(cat /tmp/fleetcmd-options.$$)
  local seen=$out
  [ "$stream" = err ] && seen=$err
  if [ "$rc" != "$status" ] || [[ "$seen" != *"$text"* ]]; then
    echo "FAIL: $what: status $rc (want $status), std$stream: ${seen:0:300}"
    failed=1
  fi
}
check "--help on standard output" 0 out "--fixed-time" --help
check "-h is --help" 0 out "Usage: fleetcmd-host" -h
check "--version" 0 out "fleetcmd-host " --version
check "unknown option named" 2 err "unknown option --frobnicate" --frobnicate
check "unknown short option named" 2 err "unknown option -q" -q
check "missing value" 2 err "option --lang needs a value" --lang
check "--opt=value form" 2 err "cannot read the language file /nonexistent.ini" --lang=/nonexistent.ini
check "unreadable script" 2 err "cannot read the script /nonexistent.fcs" --script=/nonexistent.fcs
check "stray argument" 2 err "unexpected argument extra" --demo extra
check "missing plug-in" 2 err "--plugin" --plugin=/nonexistent.so --demo
check "demo runs" 0 out "SEND 10001 0x8300" --demo --fixed-time
rm -f /tmp/fleetcmd-options.$$
exit $failed
