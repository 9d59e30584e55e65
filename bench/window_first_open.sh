#!/usr/bin/env bash
# The first open of a session against a later one, in the window as a person
# opens photos: on a virtual display with a window manager, maximised at
# 1600 × 1000, Ctrl+O, the photo's path typed into the dialog, then Return;
# milliseconds from Return until the photo shows in the preview. PHOTO
# first, then AGAIN (another photo of the same size, so the preview
# changes), then PHOTO once more. The landmark model is read from start-up,
# while the dialog is up.
#
#   bench/window_first_open.sh APP PHOTO AGAIN
set -euo pipefail
app=$(realpath "$1") photo=$(realpath "$2") again=$(realpath "$3")
here=$(cd "$(dirname "$0")" && pwd)
timer=$here/../build/bin/screen_change_timer

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$photo" "$again" "$timer" "$here/../tests/gui/waits.sh" <<'SCRIPT'
set -euo pipefail
app=$1 photo=$2 again=$3 timer=$4
. "$5"
start_window_manager
export HOME=$(mktemp -d)
"$app" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no main window"
wmctrl -r Bellavenor -b add,maximized_vert,maximized_horz
open() {
  xdotool windowfocus --sync "$main" key ctrl+o
  visible '^Open$' >/dev/null || fail "no open dialog"
  xdotool type --delay 5 "$1"
  read -r first _ _ < <($timer 320 130 300 100 xdotool key Return) # a part of the photo the dialog never covers
  echo "$2: ${first} ms from Return to the photo shown"
  gone '^Open$'
}
open "$photo" "first open"
open "$again" "later open"
open "$photo" "later open"
kill "$pid"
SCRIPT
