#!/usr/bin/env bash
# Installs the Debian packages named as arguments that are not installed yet
# (with sudo when not run as root). Sourced or run by the other scripts.
# With --no-recommends first, the packages' recommended packages stay out.
# Usage: scripts/install-packages.sh [--no-recommends] PACKAGE...
set -euo pipefail
options=()
if [ "${1:-}" = --no-recommends ]; then
  options+=(--no-install-recommends)
  shift
fi
missing=()
for p in "$@"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo=sudo
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${options[@]}" "${missing[@]}" >/dev/null
fi
