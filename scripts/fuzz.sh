#!/usr/bin/env bash
# Builds the fuzz targets (clang, libFuzzer, AddressSanitizer and
# UndefinedBehaviorSanitizer) in build-fuzz/ and runs the photo decoder (HEIF
# included), the settings reader and the metadata copy, two at a time, for
# SECONDS each (default 600), seeded
# with the test fixtures. Inputs that crash are kept in
# build-fuzz/crashes/<target>/; add them to tests/data/fuzz/ so the suite
# replays them.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-600}
"$root/scripts/setup.sh" --packages-only
source "$root/scripts/install-packages.sh"
install_packages clang libclang-rt-14-dev

build="$root/build-fuzz"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBELLAVENOR_FUZZ=ON \
      -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ >/dev/null
cmake --build "$build" --parallel "$(nproc)"

export QT_QPA_PLATFORM=offscreen
export LSAN_OPTIONS=suppressions="$root/tests/lsan-suppressions.txt"
for target in decoder settings metadata; do
  mkdir -p "$build/corpus/$target" "$build/crashes/$target"
done
"$build/bin/make_fuzz_seeds" "$root/tests/data/portrait.png" "$build/corpus/decoder" "$build/corpus/settings" \
    "$build/corpus/metadata"
cp "$root"/tests/data/portrait.gif "$build/corpus/decoder/"
[ -d "$root/tests/data/fuzz" ] && cp "$root"/tests/data/fuzz/* "$build/corpus/decoder/" 2>/dev/null || true

run() {
  local target=$1
  "$build/bin/fuzz_$target" -max_total_time="$seconds" -rss_limit_mb=3000 -timeout=20 \
      -artifact_prefix="$build/crashes/$target/" -print_final_stats=1 \
      "$build/corpus/$target" >"$build/fuzz_$target.log" 2>&1 || true
  echo "== $target: $(grep -E 'stat::number_of_executed_units' "$build/fuzz_$target.log" | awk '{print $2}') runs," \
       "$(ls "$build/crashes/$target" | wc -l) crashing inputs (log: build-fuzz/fuzz_$target.log)"
}
run decoder & run metadata & wait
run settings
