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
for tool in xvfb-run openbox xdotool import xprop; do command -v "$tool" >/dev/null || exit 77; done

. "$(dirname "$0")/session.sh"
cp "$portrait" "$work/second.png"

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$portrait" "$shots" "$work/second.png" "$(dirname "$0")/waits.sh" <<'SCRIPT'
set -euo pipefail
app=$1 portrait=$2 shots=$3 second=$4
. "$5"
# x y width height of a window's frame
frame() { xdotool getwindowgeometry --shell "$1" | awk -F= '/^[XYWH]=/{printf "%s ", $2}'; }
overlap() { # two "x y w h" strings
  read -r ax ay aw ah <<<"$1"; read -r bx by bw bh <<<"$2"
  [ $((ax < bx + bw && bx < ax + aw && ay < by + bh && by < ay + ah)) -eq 1 ]
}
# The grey level (0-255) of the screen's pixel at x y.
grey_at() { import -window root -crop "1x1+$1+$2" -colorspace Gray -depth 8 txt:- | awk 'NR==2 {gsub(/[()]/, "", $2); split($2, v, ","); print int(v[1])}'; }

start_window_manager
"$app" "$portrait" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no main window"
# Rows open their panels once the photo given at start is analysed.
skin=$(click_until_visible "$main" 88 123 '^Smooth Skin$') || fail "no panel: the photo given at start did not open"
cheek=$(click_until_visible "$main" 88 199 '^Cheek Blush$') || fail "no cheek panel"
xdotool mousemove --window "$main" 220 43 click 1    # toolbar: Mouth
lips=$(click_until_visible "$main" 88 123 '^Lip Colour$') || fail "no lips panel"
settled screen "$shots/three-panels.png"
for a in "$skin" "$cheek" "$lips"; do
  for b in "$skin" "$cheek" "$lips"; do
    [ "$a" = "$b" ] || ! overlap "$(frame "$a")" "$(frame "$b")" || fail "panels $a and $b overlap"
  done
done

# The lips colour well, then black, then the dialog once more: still light.
xdotool mousemove --window "$lips" 184 49 click 1
dialog=$(visible '^Select Color$') || fail "no colour dialog"
xdotool windowfocus --sync "$dialog"
xdotool key --delay 50 alt+h ctrl+a
xdotool type --delay 20 '#000000'
xdotool key Return
gone '^Select Color$' || fail "the colour dialog stayed"
xdotool mousemove --window "$lips" 184 49 click 1
dialog=$(visible '^Select Color$') || fail "no colour dialog the second time"
settled screen "$shots/colour-dialog-after-black.png"
read -r dx dy dw dh <<<"$(frame "$dialog")"
[ "$(grey_at $((dx + 6)) $((dy + dh - 6)))" -gt 180 ] || fail "the colour dialog after black is dark"
xdotool windowfocus --sync "$dialog" key Escape
gone '^Select Color$' || fail "Escape left the colour dialog open"

# A second photo chosen in the open dialog opens without a complaint.
xdotool windowfocus --sync "$main" key ctrl+o
opener=$(visible '^Open') || fail "no open dialog"
xdotool windowfocus --sync "$opener"
xdotool type --delay 10 "$second"
xdotool key Return
gone '^Open' || fail "the open dialog stayed"
settled screen "$shots/second-photo.png"
! xdotool search --onlyvisible --name '^Error$' >/dev/null 2>&1 || fail "the second photo was refused"
kill "$pid" 2>/dev/null || true
wait "$pid" 2>/dev/null || true

LANG=de_DE.UTF-8 LANGUAGE=de "$app" "$portrait" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no German main window"
click_until_visible "$main" 88 199 '^Rouge$' >/dev/null || fail "no German cheek panel"
xdotool windowfocus --sync "$main" key ctrl+o
visible 'ffnen$' >/dev/null || fail "the open dialog is not German"
settled screen "$shots/german.png"
kill "$pid" 2>/dev/null || true
SCRIPT
echo "screenshots in $shots"
