#!/usr/bin/env bash
# Peak memory of the window opening PHOTO and retouching it with all nine
# effects on, as a person would: on a virtual display with a window manager,
# maximised at 1600 × 1000, a preset with every effect on applied from the
# Presets menu, then a wait until the preview has settled. Prints the
# process's peak resident memory (VmHWM).
#
#   bench/window_memory.sh APP PHOTO
set -euo pipefail
app=$(realpath "$1") photo=$(realpath "$2")
here=$(cd "$(dirname "$0")" && pwd)

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$photo" "$here/../tests/gui/waits.sh" <<'SCRIPT'
set -euo pipefail
app=$1 photo=$2
. "$3"
start_window_manager
export HOME=$(mktemp -d)
presets=$HOME/.local/share/Bellavenor/presets
mkdir -p "$presets"
cat > "$presets/all nine.json" <<'JSON'
{"b_Face_Skin_Smooth": true, "b_Remove_Wrinkles": true, "b_Color_Eyes": true, "b_Widen_Eyes": true,
 "b_Eye_Eyeshadow": true, "b_Eyes_Darken": true, "b_Apply_Cheeks": true, "b_Color_Lips": true,
 "b_Whiten_Teeth": true, "u_Widen_Eyes_Level": 10}
JSON
"$app" "$photo" >/dev/null 2>&1 &
pid=$!
visible '^Bellavenor$' >/dev/null || fail "no main window"
wmctrl -r Bellavenor -b add,maximized_vert,maximized_horz
preview() { import -window root -crop 500x500+560+200 +repage "$1"; }
settled preview /tmp/memory-opened.png
xdotool mousemove 278 27 click 1     # the Presets menu
wait_until "xdotool search --onlyvisible --class Bellavenor | wc -l | grep -qv '^1$'" 10 || true
xdotool mousemove 291 48 click 1     # its first entry: the preset
changes_from preview /tmp/memory-opened.png /tmp/memory-retouched.png || fail "the preset changed nothing"
settled preview /tmp/memory-retouched.png
echo "peak memory: $(awk '/VmHWM/ {printf "%.0f MB", $2 / 1024}' /proc/$pid/status)"
kill "$pid"
SCRIPT
