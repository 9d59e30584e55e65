#!/usr/bin/env bash
# Sets up and builds if needed, then runs every test. Without a display the
# widgets run on Qt's offscreen platform.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  export QT_QPA_PLATFORM=offscreen
fi
cd "$root/build"
ctest --output-on-failure --parallel "$(nproc)" "$@"
