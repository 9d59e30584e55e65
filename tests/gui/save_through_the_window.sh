#!/usr/bin/env bash
# Drives the real window with a real X client: opens the test portrait
# through the file dialog, ticks lip colour in its panel, saves to a chosen
# path and checks the PNG arrived there. Needs xvfb-run and xdotool; skipped
# (exit 77) without them.
set -euo pipefail
app=$1
portrait=$2
for tool in xvfb-run xdotool import compare; do command -v "$tool" >/dev/null || exit 77; done

. "$(dirname "$0")/session.sh"
target=$work/saved/retouched.png
mkdir -p "$work/saved"

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$portrait" "$target" "$(dirname "$0")/waits.sh" <<'SCRIPT'
set -euo pipefail
app=$1 portrait=$2 target=$3
shots=$(dirname "$target")
. "$4"
"$app" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no main window"
open_through_dialog "$main" "$portrait"
# The Mouth menu's first entry docks the lips panel once the portrait is
# analysed; until then the menu is closed again and tried anew.
strip=$(dock_strip "$main")
import -window root -crop "$strip" +repage "$shots/no-panel.png"
open_lips() {
  xdotool mousemove --window "$main" 222 8 click 1   # the Mouth menu
  xdotool key Down Return
  wait_until "import -window root -crop '$strip' +repage '$shots/lips-panel.png'; [ \"\$(differing '$shots/no-panel.png' '$shots/lips-panel.png')\" -gt 0 ]" 5
}
wait_until open_lips || fail "no lips panel from the Mouth menu"
xdotool windowfocus --sync "$main" key space        # the Apply box has the keyboard
xdotool windowfocus --sync "$main" key ctrl+s
dialog=$(visible 'Select a folder to save the captured image') || fail "no save dialog"
xdotool windowfocus --sync "$dialog" key ctrl+a
xdotool type --delay 10 "$target"
xdotool key Return
wait_until '[ -s "$target" ]' || fail "nothing saved at $target"
kill "$pid" 2>/dev/null || true
SCRIPT

# A PNG whose header says 512 x 512, with the lips coloured.
header=$(od -An -tx1 -N24 "$target" | tr -d ' \n')
[ "${header:0:16}" = 89504e470d0a1a0a ] && [ "${header:32:16}" = 0000020000000200 ] ||
  { echo "no 512 x 512 PNG at $target"; exit 1; }
[ "$(compare -metric AE "$portrait" "$target" null: 2>&1 || true)" -gt 0 ] ||
  { echo "the saved picture is the untouched photo"; exit 1; }
echo "saved $target"
