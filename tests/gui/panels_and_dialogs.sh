#!/usr/bin/env bash
# The window as a person meets it, under a virtual display with a window
# manager (openbox): a photo given on the command line opens; two panels
# and the lips panel open without covering each other; the colour dialog
# opened after choosing black is still readable; a second photo is chosen
# in the open dialog; and the window speaks German in a German session.
# Screenshots go to the folder given as third argument (default: a
# temporary one). Skipped (exit 77) without xvfb-run, openbox, xdotool or
# ImageMagick's import.
set -euo pipefail
app=$1
portrait=$2
shots=${3:-}
for tool in xvfb-run openbox xdotool import; do command -v "$tool" >/dev/null || exit 77; done

. "$(dirname "$0")/session.sh"
cp "$portrait" "$work/second.png"

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$portrait" "$shots" "$work/second.png" <<'SCRIPT'
set -euo pipefail
app=$1 portrait=$2 shots=$3 second=$4
fail() { echo "FAILED: $*"; import -window root "$shots/failure.png"; exit 1; }
visible() { timeout 10 xdotool search --sync --onlyvisible --name "$1" | head -n 1; }
# x y width height of a window's frame
frame() { xdotool getwindowgeometry --shell "$1" | awk -F= '/^[XYWH]=/{printf "%s ", $2}'; }
overlap() { # two "x y w h" strings
  read -r ax ay aw ah <<<"$1"; read -r bx by bw bh <<<"$2"
  [ $((ax < bx + bw && bx < ax + aw && ay < by + bh && by < ay + ah)) -eq 1 ]
}

openbox >/dev/null 2>&1 &
sleep 1

"$app" "$portrait" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no main window"
sleep 4                                              # the portrait given at start is analysed
xdotool mousemove --window "$main" 88 123 click 1    # table row 1: Smooth Skin
skin=$(visible '^Smooth Skin$') || fail "no panel: the photo given at start did not open"
xdotool mousemove --window "$main" 88 199 click 1    # table row 3: Cheek Blush
cheek=$(visible '^Cheek Blush$') || fail "no cheek panel"
xdotool mousemove --window "$main" 220 43 click 1    # toolbar: Mouth
sleep 0.6
xdotool mousemove --window "$main" 88 123 click 1    # table row 1: Lips
lips=$(visible '^Lip Colour$') || fail "no lips panel"
sleep 0.5
import -window root "$shots/three-panels.png"
for a in "$skin" "$cheek" "$lips"; do
  for b in "$skin" "$cheek" "$lips"; do
    [ "$a" = "$b" ] || ! overlap "$(frame "$a")" "$(frame "$b")" || fail "panels $a and $b overlap"
  done
done

# The lips colour well, then black, then the dialog once more.
xdotool mousemove --window "$lips" 184 49 click 1
dialog=$(visible '^Select Color$') || fail "no colour dialog"
xdotool windowfocus --sync "$dialog"
xdotool key --delay 50 alt+h ctrl+a
xdotool type --delay 20 '#000000'
xdotool key Return
sleep 0.8
xdotool mousemove --window "$lips" 184 49 click 1
dialog=$(visible '^Select Color$') || fail "no colour dialog the second time"
sleep 0.5
import -window root "$shots/colour-dialog-after-black.png"
xdotool windowfocus --sync "$dialog" key Escape
sleep 0.5

# A second photo chosen in the open dialog.
xdotool windowfocus --sync "$main" key ctrl+o
opener=$(visible '^Open') || fail "no open dialog"
xdotool windowfocus --sync "$opener"
xdotool type --delay 10 "$second"
xdotool key Return
sleep 4
import -window root "$shots/second-photo.png"
kill "$pid" 2>/dev/null || true
sleep 0.5

LANG=de_DE.UTF-8 LANGUAGE=de "$app" "$portrait" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no German main window"
sleep 4
xdotool mousemove --window "$main" 88 199 click 1    # Rouge
visible '^Rouge$' >/dev/null || fail "no German cheek panel"
xdotool windowfocus --sync "$main" key ctrl+o
visible 'ffnen$' >/dev/null || fail "the open dialog is not German"
sleep 0.5
import -window root "$shots/german.png"
kill "$pid" 2>/dev/null || true
SCRIPT
echo "screenshots in $shots"
