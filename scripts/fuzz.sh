#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (build-fuzz, under AddressSanitizer
# and UndefinedBehaviorSanitizer) and runs each for a bounded time on the seed
# corpus of the acceptance scripts' replies and the simulated terminals'
# answers (and a few whole frames for the terminals' binary protocol). Inputs
# that found new paths are kept in build-fuzz/corpus; a crash leaves its input
# in build-fuzz/findings and fails the run.
# Usage: scripts/fuzz.sh [seconds per target, default 60] [target...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(reply_fuzz page_fuzz fleet_fuzz script_fuzz jt808_fuzz)
build=$root/build-fuzz

"$root/scripts/install-packages.sh" clang libclang-rt-14-dev cmake ninja-build pkg-config libjsoncpp-dev \
  libsqlite3-dev libxlsxwriter-dev libedit-dev
"$root/scripts/install-packages.sh" --no-recommends libasio-dev  # the gateway the script host links, without Boost

launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja "${launcher[@]}" -DFC_BUILD_FUZZ=ON \
  -DFC_SANITIZE=address,undefined -DFC_BUILD_TESTS=OFF -DFC_BUILD_BENCH=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
# The replies' seeds need the whole plug-in built; only the targets that read replies wait for it.
replies=0
for target in "${targets[@]}"; do
  case $target in reply_fuzz | page_fuzz) replies=1 ;; esac
done
seeders=(jt808_seeds)
[ $replies = 0 ] || seeders+=(make_seeds)
cmake --build "$build" -j"$(nproc)" --target "${seeders[@]}" "${targets[@]}"

# Seeds, written afresh each run; the corpus the runs grow is kept.
rm -rf "$build/seeds"
mkdir -p "$build/seeds/fleet_fuzz" "$build/seeds/script_fuzz"
if [ $replies = 1 ]; then
  "$build/fuzz/make_seeds" "$build/seeds" "$root"/tests/scripts/*.fcs "$root"/tests/scripts/*.out
  mv "$build/seeds/reply" "$build/seeds/reply_fuzz"
  mv "$build/seeds/page" "$build/seeds/page_fuzz"
fi
cp "$root"/tests/scripts/*.json "$root"/tests/scripts/data/*.json "$build/seeds/fleet_fuzz/"
cp "$root"/tests/scripts/*.fcs "$build/seeds/script_fuzz/"
"$build/fuzz/jt808_seeds" "$build/seeds/jt808_fuzz" >/dev/null

mkdir -p "$build/findings"
status=0
for target in "${targets[@]}"; do
  corpus=$build/corpus/$target
  mkdir -p "$corpus"
  echo "== $target: $seconds s"
  log=$build/findings/$target.log
  # The script target's own output lines (and ERROR lines) are not wanted; sanitizer reports still show.
  quiet=0
  [ "$target" = script_fuzz ] && quiet=3
  if ! (cd "$build/findings" && ASAN_OPTIONS=detect_leaks=1 "$build/fuzz/$target" -max_total_time="$seconds" \
          -timeout=10 -rss_limit_mb=2048 -max_len=65536 -close_fd_mask=$quiet -print_final_stats=1 \
          "$corpus" "$build/seeds/$target" \
          >"$log" 2>&1); then
    tail -n 40 "$log"
    echo "$target: FAILED (input and log in $build/findings)"
    status=1
    continue
  fi
  grep -E "^stat::number_of_executed_units|^stat::peak_rss_mb|^Done" "$log" | tr '\n' ' '
  echo
done
exit $status
