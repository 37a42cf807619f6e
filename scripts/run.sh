#!/usr/bin/env bash
# Builds zr_board and runs its main job on the bundled example repository:
# every bundled board is read, validated and checked, one is shown, the Tcl
# package and the Python module walk it, and the board site of the whole repository is written to
# build/site.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup-deps.sh"
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$root/build" -j"$(nproc)" --target zrboard zrboard_tcl zrboard_py
export ZR_DATA_DIRS="$root/data"
mapfile -t boards < <(find "$root/data/boards" -name board.xml | sort)
"$root/build/bin/zrboard" check "${boards[@]}"
"$root/build/bin/zrboard" show "$root/data/boards/board_files/tarnwick/1.2"
TCLLIBPATH="$root/build/tcl" tclsh8.6 "$root/scripts/show_board.tcl"
PYTHONPATH="$root/build/python" python3 "$root/scripts/show_board.py"
"$root/build/bin/zrboard" site "$root/build/site"
