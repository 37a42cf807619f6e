#!/usr/bin/env bash
# Builds zr_board and runs the tool on the bundled example repository.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup-deps.sh"
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$root/build" -j"$(nproc)" --target zrboard
export ZR_DATA_DIRS="$root/data"
"$root/build/bin/zrboard" params
