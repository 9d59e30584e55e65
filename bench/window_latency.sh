#!/usr/bin/env bash
# The window's latency as a person meets it, on a virtual display with a
# window manager: opens PHOTO in the application APP (maximised,
# 1600 × 1000 screen), ticks Smooth Skin, then moves its Level slider one
# step with the arrow keys STEPS times (default 9), back and forth. For each
# key press: milliseconds until the preview first changed and until it last
# changed (the full picture, on a large photo), from screen_change_timer.
# Then the slider is moved twenty steps, one key press every 50 ms as a held
# key repeats, and the longest time the preview did not change while the
# keys came is printed: a window that stops answering shows there. Prints the tick, every step,
# the medians, the held key and the process's peak memory.
#
#   bench/window_latency.sh APP PHOTO [STEPS]
set -euo pipefail
app=$(realpath "$1") photo=$(realpath "$2") steps=${3:-9}
here=$(cd "$(dirname "$0")" && pwd)
timer=$here/../build/bin/screen_change_timer
[ -x "$timer" ] || { echo "build the project first (screen_change_timer)"; exit 1; }

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$photo" "$steps" "$timer" "$here/../tests/gui/waits.sh" <<'SCRIPT'
set -euo pipefail
app=$1 photo=$2 steps=$3 timer=$4
. "$5"
start_window_manager
export HOME=$(mktemp -d) # no remembered window place or panels
"$app" "$photo" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no main window"
wmctrl -r Bellavenor -b add,maximized_vert,maximized_horz
click_until_docked "$main" 88 123 || fail "no skin panel"
xdotool mousemove 60 990
face="560 200 500 500" # x y w h: the face in the fitted photo
preview() { import -window root -crop 500x500+560+200 +repage "$1"; }
settled preview /tmp/latency-before.png
xdotool windowfocus --sync "$main"
read -r first last _ < <($timer $face xdotool key space)
echo "tick Smooth Skin: first change ${first} ms, last ${last} ms"
xdotool key Tab
settled preview /tmp/latency-before.png
firsts=() lasts=()
for ((i = 0; i < steps; i++)); do
  key=$([ $((i % 2)) -eq 0 ] && echo Right || echo Left)
  read -r first last _ < <($timer $face xdotool key "$key")
  echo "step $key: first change ${first} ms, last ${last} ms"
  firsts+=("$first") lasts+=("$last")
done
median() { printf '%s\n' "$@" | sort -n | awk '{a[NR]=$1} END {print a[int((NR + 1) / 2)]}'; }
echo "median of $steps steps: first change $(median "${firsts[@]}") ms, last change $(median "${lasts[@]}") ms"
settled preview /tmp/latency-before.png
read -r first last gap < <($timer $face xdotool key --delay 50 Right Right Right Right Right Right Right Right Right Right \
  Left Left Left Left Left Left Left Left Left Left)
echo "held key, 20 steps 50 ms apart: longest time without a new frame while the keys came ${gap} ms, last change ${last} ms"
echo "peak memory: $(awk '/VmHWM/ {printf "%.0f MB", $2 / 1024}' /proc/$pid/status)"
kill "$pid"
SCRIPT
