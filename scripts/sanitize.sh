#!/usr/bin/env bash
# Builds the engine's test programs (imaging, face, preview) with
# AddressSanitizer and UndefinedBehaviorSanitizer in build-sanitize/ and
# runs them: any invalid memory access, leak or undefined behaviour fails
# the run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh" --packages-only
build="$root/build-sanitize"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBELLAVENOR_SANITIZE=ON >/dev/null
cmake --build "$build" --parallel "$(nproc)" --target imaging_tests face_tests preview_tests
# Absurd sizes must come back as null, as from the real allocator, so the
# program can refuse them.
# Full stacks (Qt has no frame pointers), so leak suppressions can match.
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:allocator_may_return_null=1:fast_unwind_on_malloc=0
export LSAN_OPTIONS=suppressions="$root/tests/lsan-suppressions.txt" UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export QT_QPA_PLATFORM=offscreen
cd "$build"
ctest -R '^(imaging|face|preview)_tests$' --output-on-failure --parallel "$(nproc)" "$@"
