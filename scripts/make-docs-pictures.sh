#!/usr/bin/env bash
# Makes every picture in docs/ anew from the current program, so the README
# and the AppStream screenshots show the program as it is: the window
# scripts of the tests drive the real window under a virtual display with a
# window manager and leave their screenshots, which are cut and scaled here;
# the before-and-after picture is rendered by the command-line tool from
# docs/example-settings.json.
#
#   scripts/make-docs-pictures.sh        (after scripts/setup.sh)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build docs=$root/docs portrait=$root/tests/data/portrait.png
[ -x "$build/bin/bellavenor" ] || "$root/scripts/setup.sh"
shots=$(mktemp -d)
trap 'rm -rf "$shots"' EXIT

"$root/tests/gui/panels_and_dialogs.sh" "$build/bin/bellavenor" "$portrait" "$shots" >/dev/null
"$root/tests/gui/compare_and_zoom.sh" "$build/bin/bellavenor" "$portrait" "$shots" >/dev/null

# The maximised window with three panels docked: the whole screen, and the
# window as the README's first picture shows it.
convert "$shots/three-panels.png" -resize 1200x750 -strip -quality 85 "$docs/docked-panels.jpg"
convert "$shots/three-panels.png" -resize 1300x -strip -quality 85 "$docs/window.jpg"
convert "$shots/colour-dialog-after-black.png" -resize 1300x -strip -quality 85 "$docs/colour-dialog.jpg"
convert "$shots/german.png" -resize 1300x -strip -quality 85 "$docs/window-de.jpg"
convert "$shots/split-view.png" -resize 1200x -strip -quality 85 "$docs/split-view.jpg"

QT_QPA_PLATFORM=offscreen "$build/bin/bellavenor-cli" render "$portrait" \
    --settings "$docs/example-settings.json" -o "$shots/after.png"
convert "$portrait" "$shots/after.png" +append -resize 780x390 -strip -quality 85 "$docs/before-after.jpg"
echo "pictures made in $docs"
