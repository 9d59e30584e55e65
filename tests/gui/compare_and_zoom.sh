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
for tool in xvfb-run openbox xdotool import compare; do command -v "$tool" >/dev/null || exit 77; done

. "$(dirname "$0")/session.sh"

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$portrait" "$shots" <<'SCRIPT'
set -euo pipefail
app=$1 portrait=$2 shots=$3
fail() { echo "FAILED: $*"; import -window root "$shots/failure.png"; exit 1; }
visible() { timeout 10 xdotool search --sync --onlyvisible --name "$1" | head -n 1; }
# The main window's preview area only: panels and the pointer stay out of it.
preview() { import -window root -crop 700x560+560+310 +repage "$1"; }
differing() { compare -metric AE "$1" "$2" null: 2>&1 || true; }
# Captures the preview into $2 until it equals $1 (a slow machine may
# repaint late); true when it did within three seconds.
becomes() {
  for _ in 1 2 3 4 5 6; do
    preview "$2"
    [ "$(differing "$1" "$2")" -eq 0 ] && return 0
    sleep 0.5
  done
  return 1
}

openbox >/dev/null 2>&1 &
sleep 1
"$app" "$portrait" >/dev/null 2>&1 &
pid=$!
main=$(visible '^Bellavenor$') || fail "no main window"
sleep 4
xdotool mousemove --window "$main" 88 123 click 1    # Face row 1: Smooth Skin
skin=$(visible '^Smooth Skin$') || fail "no skin panel"
sleep 0.5
xdotool windowfocus --sync "$skin" key space         # its Apply box has the focus
sleep 1
xdotool mousemove --window "$main" 220 43 click 1    # toolbar: Mouth
sleep 0.6
xdotool mousemove --window "$main" 88 123 click 1    # Mouth row 1: Lips
lips=$(visible '^Lip Colour$') || fail "no lips panel"
sleep 0.5
xdotool windowfocus --sync "$lips" key --delay 100 space Tab Tab Page_Up Page_Up Page_Up Page_Up
sleep 1.5
xdotool windowfocus --sync "$main"
xdotool mousemove 60 950                             # the pointer off the preview
sleep 0.5
preview "$shots/retouched.png"

xdotool key shift+backslash
sleep 0.8
import -window root "$shots/split-view.png"
preview "$shots/split-preview.png"
[ "$(differing "$shots/retouched.png" "$shots/split-preview.png")" -gt 0 ] || fail "Shift+\\ showed no split"
xdotool key shift+backslash
sleep 0.8

xdotool keydown backslash
sleep 0.8
preview "$shots/untouched.png"
xdotool keyup backslash
[ "$(differing "$shots/retouched.png" "$shots/untouched.png")" -gt 0 ] || fail "\\ held showed the retouched picture"
becomes "$shots/retouched.png" "$shots/released.png" || fail "releasing \\ did not bring the retouched picture back"

xdotool key ctrl+1
sleep 0.8
import -window root "$shots/actual-pixels.png"
preview "$shots/actual-pixels-preview.png"
[ "$(differing "$shots/retouched.png" "$shots/actual-pixels-preview.png")" -gt 0 ] || fail "Ctrl+1 changed nothing"
xdotool key ctrl+0
becomes "$shots/retouched.png" "$shots/fitted-again.png" || fail "Ctrl+0 did not give the fitted photo back"
kill "$pid" 2>/dev/null || true
SCRIPT
echo "screenshots in $shots"
