#!/usr/bin/env bash
# The docked panels' geometry on a real X display under a window manager
# (openbox), the window maximised by it: app_tests' docking test on xcb.
# Skipped (exit 77) without xvfb-run or openbox.
set -euo pipefail
tests=$1
for tool in xvfb-run openbox xprop; do command -v "$tool" >/dev/null || exit 77; done

. "$(dirname "$0")/session.sh"

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$tests" "$(dirname "$0")/waits.sh" <<'SCRIPT'
set -euo pipefail
. "$2"
start_window_manager
QT_QPA_PLATFORM=xcb "$1" --gtest_filter='EditorHabitsTest.Docked*'
SCRIPT
