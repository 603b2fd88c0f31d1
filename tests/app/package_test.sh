#!/usr/bin/env bash
# The Debian package, installed: unpacked into a temporary root (or, with
# --dpkg, installed on this machine with dpkg as CI does), its fleetcmd-host
# runs the demo from the package's own plug-in and language files, and
# fleetcmd.pc names the header and the plug-in folder.
# Usage: package_test.sh DEB|FOLDER [--dpkg]   (a folder: the newest fleetcmd_*.deb in it)
set -uo pipefail
deb=$1
[ -d "$deb" ] && deb=$(ls -t "$deb"/fleetcmd_*.deb 2>/dev/null | head -1)
mode=${2:-}
# Without a package built (scripts/package.sh) there is nothing to check: CTest counts it as skipped.
[ -f "$deb" ] || { echo "no package at $deb (scripts/package.sh builds it)"; exit 77; }
failed=0
fail() { echo "FAIL: $*"; failed=1; }

if [ "$mode" = --dpkg ]; then
  root=""
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo=sudo
  $sudo dpkg -i "$deb" >/dev/null || { echo "FAIL: dpkg -i $deb"; exit 1; }
else
  root=$(mktemp -d)
  trap 'rm -rf "$root"' EXIT
  dpkg -x "$deb" "$root"
fi
host=$root/usr/bin/fleetcmd-host
multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)

[ -x "$host" ] || { echo "FAIL: no $host in the package"; exit 1; }
for f in usr/lib/$multiarch/fleetcmd/plugins/libfleetcmd.so usr/share/fleetcmd/lang/en.ini \
         usr/share/fleetcmd/lang/zh-CN.ini usr/include/fleetcmd/fleetcmd.h usr/share/man/man1/fleetcmd-host.1.gz \
         usr/share/doc/fleetcmd/copyright usr/bin/fleetcmd-gw usr/bin/fleetcmd-termsim \
         usr/share/man/man1/fleetcmd-gw.1.gz usr/share/man/man1/fleetcmd-termsim.1.gz; do
  [ -e "$root/$f" ] || fail "the package lacks /$f"
done

# Every library the host and the plug-in load comes from the package or the system, none from a build tree.
for binary in "$host" "$root/usr/lib/$multiarch/fleetcmd/plugins/libfleetcmd.so" "$root/usr/bin/fleetcmd-gw" \
              "$root/usr/bin/fleetcmd-termsim"; do
  if ldd "$binary" | grep -E "not found|/build|/obj-"; then fail "$binary does not find its libraries in the package"; fi
done

# The demo, from the installed files only (the build tree is not looked at: no file of it is named).
out=$(cd / && "$host" --demo --fixed-time 2>&1); rc=$?
[ $rc -eq 0 ] || fail "the installed demo exited with $rc: $out"
for line in 'HOSTMSG 13336 1 12' \
            'SEND 10001 0x8300 {"Flag":8,"TextInfo":"Please return to the depot by 18:00.","TextType":1}' \
            'ROW 1|粤B10001|2026-01-15 09:30:00|Text message|Set succeeded|' \
            'CALLBACK 0 10003'; do
  grep -qF -- "$line" <<<"$out" || fail "the installed demo did not print: $line"
done
"$host" --help | grep -q -- "--fixed-time" || fail "the installed host has no --help"

# The gateway and the simulated terminals from the package: the host's
# demo through them, all in one process on loopback ports.
out=$(cd / && "$host" --demo --fixed-time --net gw 2>&1); rc=$?
[ $rc -eq 0 ] || fail "the installed demo through the gateway exited with $rc: $out"
grep -qF 'ROW 1|粤B10001|2026-01-15 09:30:00|Text message|Set succeeded|' <<<"$out" ||
  fail "the installed demo through the gateway did not print its text message row"
"$root/usr/bin/fleetcmd-gw" --help | grep -q -- "--control-port" || fail "the installed fleetcmd-gw has no --help"
"$root/usr/bin/fleetcmd-termsim" --help | grep -q -- "--generate" || fail "the installed fleetcmd-termsim has no --help"

# Host developers: the header's folder and the plug-in folder from fleetcmd.pc.
pc=$root/usr/lib/$multiarch/pkgconfig
cflags=$(PKG_CONFIG_PATH=$pc pkg-config --cflags fleetcmd)
plugindir=$(PKG_CONFIG_PATH=$pc pkg-config --variable=plugindir fleetcmd)
[ "$cflags" = "-I/usr/include" ] || [ -z "$cflags" ] || fail "fleetcmd.pc Cflags: $cflags"
[ "$plugindir" = "/usr/lib/$multiarch/fleetcmd/plugins" ] || fail "fleetcmd.pc plugindir: $plugindir"
exit $failed
