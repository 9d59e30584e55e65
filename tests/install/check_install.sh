#!/usr/bin/env bash
# Installs the build into a temporary prefix, validates the desktop entry
# and the AppStream file, and runs the installed command-line tool on the
# test portrait.
set -euo pipefail
build=$1
portrait=$2
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

cmake --install "$build" --prefix "$prefix" >/dev/null
for file in bin/bellavenor bin/bellavenor-cli share/bellavenor/help/index.html \
            share/icons/hicolor/scalable/apps/bellavenor.svg share/icons/hicolor/48x48/apps/bellavenor.png; do
  [ -e "$prefix/$file" ] || { echo "missing after install: $file"; exit 1; }
done
desktop-file-validate "$prefix/share/applications/org.bellavenor.bellavenor.desktop"
appstreamcli validate --no-net "$prefix/share/metainfo/org.bellavenor.bellavenor.metainfo.xml" >/dev/null

analysis=$(QT_QPA_PLATFORM=offscreen "$prefix/bin/bellavenor-cli" analyse "$portrait" 2>/dev/null)
grep -q '"array_Face_Points"' <<<"$analysis" || { echo "the installed tool gave no analysis"; exit 1; }
echo "the installed build analyses the portrait"
