#!/usr/bin/env bash
# The window as a person meets it, under a virtual display with a window
# manager (openbox): a photo given on the command line opens in a maximised
# window; two panels and the lips panel dock beside the photo; the colour dialog
# opened after choosing black is still readable; a second photo is chosen
# in the open dialog; and the window speaks German in a German session.
# Screenshots go to the folder given as third argument (default: a
# temporary one). Skipped (exit 77) without xvfb-run, openbox, xdotool or
# ImageMagick's import.
set -euo pipefail
app=$1
portrait=$2
shots=${3:-}
for tool in xvfb-run openbox xdotool wmctrl import xprop; do command -v "$tool" >/dev/null || exit 77; done

. "$(dirname "$0")/session.sh"
cp "$portrait" "$work/second.png"

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$portrait" "$shots" "$work/second.png" "$(dirname "$0")/waits.sh" <<'SCRIPT'
set -euo pipefail
app=$1 portrait=$2 shots=$3 second=$4
. "$5"
# x y width height of a window's frame
frame() { xdotool getwindowgeometry --shell "$1" | awk -F= '/^(X|Y|WIDTH|HEIGHT)=/{printf "%s ", $2}'; }
# The grey level (0-255) of the screen's pixel at x y.
grey_at() { import -window root -crop "1x1+$1+$2" -colorspace Gray -depth 8 txt:- | awk 'NR==2 {gsub(/[()]/, "", $2); split($2, v, ","); print int(v[1])}'; }

start_window_manager
"$app" "$portrait" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no main window"
wmctrl -i -r "$main" -b add,maximized_vert,maximized_horz
wait_until '[ "$(frame "$main" | cut -d" " -f3)" -eq 1600 ]' || fail "the window did not maximise"
# Rows open their panels once the photo given at start is analysed; each
# docks beside the preview (their geometry is checked by app_tests'
# DockedPanels, here and offscreen).
click_until_docked "$main" 88 123 || fail "no panel: the photo given at start did not open"
click_until_docked "$main" 88 199 || fail "no cheek panel"
xdotool mousemove --window "$main" 220 43 click 1    # toolbar: Mouth
click_until_docked "$main" 88 123 || fail "no lips panel"
! xdotool search --onlyvisible --name '^(Smooth Skin|Cheek Blush|Lip Colour)$' >/dev/null 2>&1 ||
  fail "a panel opened as a window of its own"
settled screen "$shots/three-panels.png"

# The lips colour well (after the Apply box, which has the keyboard), then
# black, then the dialog once more: still light.
xdotool key Tab space
dialog=$(visible '^Select Color$') || fail "no colour dialog"
xdotool windowfocus --sync "$dialog"
xdotool key --delay 50 alt+h ctrl+a
xdotool type --delay 20 '#000000'
xdotool key Return
gone '^Select Color$' || fail "the colour dialog stayed"
xdotool windowfocus --sync "$main" key space         # the well has the keyboard again
dialog=$(visible '^Select Color$') || fail "no colour dialog the second time"
settled screen "$shots/colour-dialog-after-black.png"
read -r dx dy dw dh <<<"$(frame "$dialog")"
# Near its bottom-left corner (xdotool's y may count the title bar twice).
[ "$(grey_at $((dx + 6)) $((dy + dh - 40)))" -gt 180 ] || fail "the colour dialog after black is dark"
xdotool windowfocus --sync "$dialog" key Escape
gone '^Select Color$' || fail "Escape left the colour dialog open"

# A second photo chosen in the open dialog opens without a complaint.
open_through_dialog "$main" "$second"
settled screen "$shots/second-photo.png"
! xdotool search --onlyvisible --name '^Error$' >/dev/null 2>&1 || fail "the second photo was refused"
kill "$pid" 2>/dev/null || true
wait "$pid" 2>/dev/null || true

LANG=de_DE.UTF-8 LANGUAGE=de "$app" "$portrait" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no German main window"
click_until_docked "$main" 88 199 || fail "no German cheek panel"
xdotool windowfocus --sync "$main" key ctrl+o
visible 'ffnen$' >/dev/null || fail "the open dialog is not German"
settled screen "$shots/german.png"
kill "$pid" 2>/dev/null || true
SCRIPT
echo "screenshots in $shots"
