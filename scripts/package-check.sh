#!/usr/bin/env bash
# Makes the Debian package from the build in build/ and checks it: lintian
# finds no error, apt resolves its dependencies on this Debian release, and
# the package's own files, unpacked into a temporary root (nothing is
# installed system-wide), run: the command-line tool's version, an analysis
# and a render of the test portrait, and the window started without a display,
# finding its landmark model, help pages and translations where the package
# puts them.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build
[ -x "$build/bin/bellavenor" ] || "$root/scripts/setup.sh"
export QT_QPA_PLATFORM=offscreen

(cd "$build" && rm -f bellavenor_*.deb && cpack -G DEB >/dev/null)
deb=$(ls "$build"/bellavenor_*.deb)
echo "package: $(basename "$deb"), $(du -k "$deb" | cut -f1) KiB"
lintian --fail-on error "$deb"
apt-get install --simulate "$deb" >/dev/null
echo "apt resolves its dependencies: $(dpkg-deb -f "$deb" Depends)"

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
dpkg -x "$deb" "$unpacked"
bin=$unpacked/usr/bin
"$bin/bellavenor-cli" --version
analysis=$("$bin/bellavenor-cli" analyse "$root/tests/data/portrait.png")
grep -q '"array_Face_Points"' <<<"$analysis" || { echo "the packaged tool gave no analysis"; exit 1; }
"$bin/bellavenor-cli" render "$root/tests/data/portrait.png" --settings "$root/docs/example-settings.json" \
    -o "$unpacked/retouched.png"
[ -s "$unpacked/retouched.png" ] || { echo "the packaged tool rendered nothing"; exit 1; }
# No display: the check must not need one.
found=$(env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb "$bin/bellavenor" --check-installation)
echo "$found"
grep -q "^help pages: $unpacked/usr/share/bellavenor/help/index.html" <<<"$found" \
    || { echo "the packaged window does not find its help pages"; exit 1; }
for page in bellavenor bellavenor-cli; do
  sections=$(zcat "$unpacked/usr/share/man/man1/$page.1.gz" | grep '^\.SH' | tr -d '"')
  for section in NAME SYNOPSIS DESCRIPTION OPTIONS "EXIT STATUS" FILES EXAMPLES; do
    grep -qx ".SH $section" <<<"$sections" || { echo "the manual page of $page has no $section"; exit 1; }
  done
done
# Every form of the command line is in the synopsis.
zcat "$unpacked/usr/share/man/man1/bellavenor-cli.1.gz" | sed -n '/^\.SH SYNOPSIS/,/^\.SH DESCRIPTION/p' \
    | grep -c 'render\|analyse\|settings' | grep -qx 4 || { echo "the synopsis lacks a form"; exit 1; }
echo "the package's own files run"
