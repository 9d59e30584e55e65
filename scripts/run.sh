#!/usr/bin/env bash
# Sets up and builds if needed, then starts Bellavenor.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
exec "$root/build/bin/bellavenor" "$@"
