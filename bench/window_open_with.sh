#!/usr/bin/env bash
# "Open with": the window started with a photo as its argument, as a file
# manager starts it, on a virtual display with a window manager; from the
# start to the window's first paint and to the photo shown, in
# milliseconds, for a first start (no cache of the landmark model yet) and
# a second one. Both include the process's start.
#
#   bench/window_open_with.sh APP PHOTO
set -euo pipefail
app=$(realpath "$1") photo=$(realpath "$2")
here=$(cd "$(dirname "$0")" && pwd)
timer=$here/../build/bin/screen_change_timer

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$photo" "$timer" "$here/../tests/gui/waits.sh" <<'SCRIPT'
set -euo pipefail
app=$1 photo=$2 timer=$3
. "$4"
start_window_manager
export HOME=$(mktemp -d) XDG_CACHE_HOME=$(mktemp -d)
for start in "first start" "second start"; do
  # Where the window opens (1200 × 800 in the middle): its menus and toolbar
  # change the screen first, the photo last.
  read -r first last _ < <(SCREEN_REST_MS=6000 $timer 220 110 1160 760 "$app" "$photo")
  echo "$start: window painted after ${first} ms, the photo shown after ${last} ms"
  gone '^Bellavenor$'
done
SCRIPT
