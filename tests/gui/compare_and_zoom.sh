#!/usr/bin/env bash
# Before/after and zoom as a person uses them, under a virtual display with
# a window manager: skin smoothing and lip colour on, Shift+\ splits the
# preview, \ held shows the untouched photo and its release the retouched
# one again, Ctrl+1 shows 100 %, Ctrl+0 the fitted photo again. Screenshots
# go to the folder given as third argument (default: a temporary one).
# Skipped (exit 77) without xvfb-run, openbox, xdotool or ImageMagick.
set -euo pipefail
app=$1
portrait=$2
shots=${3:-}
for tool in xvfb-run openbox xdotool import compare xprop; do command -v "$tool" >/dev/null || exit 77; done

. "$(dirname "$0")/session.sh"

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$portrait" "$shots" "$(dirname "$0")/waits.sh" <<'SCRIPT'
set -euo pipefail
app=$1 portrait=$2 shots=$3
. "$4"
# The main window's preview area only: panels and the pointer stay out of it.
preview() { import -window root -crop 520x560+440+300 +repage "$1"; }

start_window_manager
"$app" "$portrait" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no main window"
click_until_docked "$main" 88 123 || fail "no skin panel" # Face row 1
xdotool mousemove 60 950                             # the pointer off the preview
settled preview "$shots/photo.png"
xdotool windowfocus --sync "$main" key space         # its Apply box has the keyboard
changes_from preview "$shots/photo.png" "$shots/smoothed.png" || fail "Apply did not smooth the skin"
xdotool mousemove --window "$main" 220 43 click 1    # toolbar: Mouth
click_until_docked "$main" 88 123 || fail "no lips panel" # Mouth row 1
xdotool windowfocus --sync "$main" key --delay 100 space Tab Tab Page_Up Page_Up Page_Up Page_Up
xdotool mousemove 60 950
changes_from preview "$shots/smoothed.png" "$shots/coloured.png" || fail "lip colour changed nothing"
settled preview "$shots/retouched.png"

xdotool key shift+backslash
changes_from preview "$shots/retouched.png" "$shots/split-preview.png" || fail "Shift+\\ showed no split"
settled screen "$shots/split-view.png"
xdotool key shift+backslash
becomes preview "$shots/retouched.png" "$shots/unsplit.png" || fail "Shift+\\ again did not end the split"

xdotool keydown backslash
changes_from preview "$shots/retouched.png" "$shots/untouched.png" || fail "\\ held showed the retouched picture"
xdotool keyup backslash
becomes preview "$shots/retouched.png" "$shots/released.png" || fail "releasing \\ did not bring the retouched picture back"

xdotool key ctrl+1
changes_from preview "$shots/retouched.png" "$shots/actual-pixels-preview.png" || fail "Ctrl+1 changed nothing"
settled screen "$shots/actual-pixels.png"
xdotool key ctrl+0
becomes preview "$shots/retouched.png" "$shots/fitted-again.png" || fail "Ctrl+0 did not give the fitted photo back"
kill "$pid" 2>/dev/null || true
SCRIPT
echo "screenshots in $shots"
