#!/usr/bin/env bash
# Builds the engine's tests and the command-line tool with ThreadSanitizer
# in build-threads/ and runs the tests that start threads: the landmark
# model read while analyses wait for it, the preview's full composition on
# another thread, a batch's two workers. A data race fails the run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh" --packages-only
build="$root/build-threads"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBELLAVENOR_SANITIZE_THREAD=ON >/dev/null
cmake --build "$build" --parallel "$(nproc)" --target face_tests preview_tests cli_tests bellavenor-cli
# die_after_fork=0: the tests start the command-line tool from a process
# with threads; the child only runs exec.
export TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 die_after_fork=0 suppressions=$root/tests/tsan-suppressions.txt"
export QT_QPA_PLATFORM=offscreen
cd "$build"
bin/face_tests --gtest_filter='LandmarkModel.*'
bin/preview_tests --gtest_filter='LiveView.*'
bin/cli_tests --gtest_filter='BatchRenderTest.GoodPhotos*' # the two workers; Ctrl+C only adds time here
