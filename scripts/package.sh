#!/usr/bin/env bash
# Builds the Debian package of fleetcmd with dpkg-buildpackage -b (debhelper,
# cmake+ninja) from a copy of the source tree, checks it with lintian, and
# leaves the .deb in the output folder (default build-deb/).
# Usage: scripts/package.sh [output-dir]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${1:-$root/build-deb}

# What building and checking a package needs, besides the build's own packages.
packages=(dpkg-dev debhelper fakeroot lintian help2man cmake ninja-build pkgconf g++ libedit-dev
          libjsoncpp-dev libminizip-dev libsqlite3-dev libxlsxwriter-dev)
"$root/scripts/install-packages.sh" "${packages[@]}"
"$root/scripts/install-packages.sh" --no-recommends libasio-dev  # headers only, without Boost

# ccache, when the machine has it, shares compiled objects with earlier builds.
if command -v ccache >/dev/null; then
  export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

# dpkg-buildpackage writes beside the source folder: build in a copy under the output folder.
rm -rf "$out"
mkdir -p "$out/fleetcmd"
tar -C "$root" --exclude='./build*' --exclude='./.git' --exclude='./.cache' -cf - . | tar -C "$out/fleetcmd" -xf -
(cd "$out/fleetcmd" && dpkg-buildpackage -b -us -uc > "$out/build.log" 2>&1) || {
  tail -40 "$out/build.log"
  echo "package.sh: dpkg-buildpackage failed; the whole log is $out/build.log" >&2
  exit 1
}
deb=$(ls "$out"/fleetcmd_*.deb)
echo "package: $deb"
# lintian: errors fail the build; warnings are listed.
lintian --tag-display-limit 0 "$deb" | tee "$out/lintian.txt" || true
if grep -q '^E:' "$out/lintian.txt"; then
  echo "package.sh: lintian reports errors" >&2
  exit 1
fi
