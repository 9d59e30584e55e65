#!/usr/bin/env bash
# Makes the Debian package from the build in build/ and checks it: lintian
# finds no error, apt resolves its dependencies on this Debian release, and
# the package's own files, unpacked into a temporary root (nothing is
# installed system-wide), run: the command-line tool's version, an analysis
# and a render of the test portrait, and the window started offscreen,
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
found=$("$bin/bellavenor" --check-installation)
echo "$found"
grep -q "^help pages: $unpacked/usr/share/bellavenor/help/index.html" <<<"$found" \
    || { echo "the packaged window does not find its help pages"; exit 1; }
for page in bellavenor bellavenor-cli; do
  grep -q '^\.SH' <(zcat "$unpacked/usr/share/man/man1/$page.1.gz") || { echo "no manual page for $page"; exit 1; }
done
echo "the package's own files run"
