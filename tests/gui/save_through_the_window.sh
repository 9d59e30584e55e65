#!/usr/bin/env bash
# Drives the real window with a real X client: opens the test portrait
# through the file dialog, ticks lip colour in its panel, saves to a chosen
# path and checks the PNG arrived there. Needs xvfb-run and xdotool; skipped
# (exit 77) without them.
set -euo pipefail
app=$1
portrait=$2
command -v xvfb-run >/dev/null && command -v xdotool >/dev/null || exit 77

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work XDG_CONFIG_HOME=$work/.config XDG_RUNTIME_DIR=$work/run
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
unset QT_QPA_PLATFORM
target=$work/saved/retouched.png
mkdir -p "$work/saved"

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$app" "$portrait" "$target" <<'SCRIPT'
set -u
app=$1 portrait=$2 target=$3
"$app" >/dev/null 2>&1 &
pid=$!
main=$(xdotool search --sync --onlyvisible --name '^Bellavenor$' | head -n 1)
xdotool windowfocus --sync "$main" key ctrl+o
xdotool search --sync --onlyvisible --name 'Bellavenor' >/dev/null
sleep 1
xdotool type --delay 10 "$portrait"
xdotool key Return
sleep 4                                        # analysis of the portrait
xdotool mousemove --window "$main" 184 8 click 1 # the Mouth menu
sleep 0.5
xdotool key Down Return                          # its first entry: Lips
panel=$(xdotool search --sync --onlyvisible --name '^Lip Colour$' | head -n 1)
xdotool mousemove --window "$panel" 14 14 click 1 # the Apply box
sleep 0.5
xdotool windowfocus --sync "$main" key ctrl+s
dialog=$(xdotool search --sync --onlyvisible --name 'Select a folder to save the captured image' | head -n 1)
sleep 0.5
xdotool windowfocus --sync "$dialog" key ctrl+a
xdotool type --delay 10 "$target"
xdotool key Return
for _ in $(seq 1 20); do [ -s "$target" ] && break; sleep 0.5; done
kill "$pid" 2>/dev/null
SCRIPT

# A PNG whose header says 512 x 512.
header=$(od -An -tx1 -N24 "$target" | tr -d ' \n')
[ "${header:0:16}" = 89504e470d0a1a0a ] && [ "${header:32:16}" = 0000020000000200 ] ||
  { echo "no 512 x 512 PNG at $target"; exit 1; }
echo "saved $target"
