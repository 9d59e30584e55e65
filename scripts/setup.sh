#!/usr/bin/env bash
# Installs the Debian packages Bellavenor builds and runs with (only those
# still missing), then configures and builds a Release tree in build/.
# With --packages-only it stops after the packages.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

packages=(
  # compiler, build and tests
  g++ cmake ninja-build pkg-config libgtest-dev libgmock-dev libbenchmark-dev
  # Qt 6: widgets, interface files, translations, image formats, headless platform
  qt6-base-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
  qt6-image-formats-plugins qt6-qpa-plugins qt6-svg-dev qt6-translations-l10n fonts-dejavu-core
  # pixel filters, inpainting, face detection and its 68-landmark model, date formatting
  libopencv-core-dev libopencv-imgproc-dev libopencv-photo-dev libdlib-dev libdlib-data libicu-dev
  # HEIF/HEIC and AVIF photos, EXIF/XMP/IPTC metadata
  libheif-dev libexiv2-dev
  # desktop checks and scripted runs under a virtual display with a window
  # manager, and their screenshots
  time bc xvfb xauth x11-utils xdotool wmctrl openbox imagemagick desktop-file-utils appstream
  # the Debian package: its manual pages from --help, its dependencies, its checks
  help2man dpkg-dev lintian file
)

source "$root/scripts/install-packages.sh"
install_packages "${packages[@]}"
[ "${1:-}" = "--packages-only" ] && exit 0

cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$root/build" --parallel "$(nproc)"
