#!/usr/bin/env bash
# Installs a build tree into a scratch prefix and builds an outside program
# against it twice: through pkg-config and through find_package.
set -euo pipefail
build=${1:?build directory}
root=$(cd "$(dirname "$0")/.." && pwd)
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
cmake --install "$build" --prefix "$tmp/prefix" >/dev/null
cp "$root/tests/install/outside.cpp" "$tmp/x.cpp"
PKG_CONFIG_PATH="$tmp/prefix/lib/pkgconfig" \
  g++ "$tmp/x.cpp" -o "$tmp/x" $(PKG_CONFIG_PATH="$tmp/prefix/lib/pkgconfig" pkg-config --cflags --libs zr_board)
"$tmp/x"
mkdir -p "$tmp/cm"
cp "$root/tests/install/CMakeLists.txt" "$root/tests/install/outside.cpp" "$tmp/cm/"
cmake -S "$tmp/cm" -B "$tmp/cm/build" -DCMAKE_PREFIX_PATH="$tmp/prefix" >/dev/null
cmake --build "$tmp/cm/build" >/dev/null
"$tmp/cm/build/outside"
echo "install check: pkg-config and find_package builds ran"
# The installed Python module imports in a plain python3 and finds the installed boards.
site=$(echo "$tmp"/prefix/lib/python3*/site-packages)
if [ -d "$site" ]; then
  env -u ZR_DATA_DIRS PYTHONPATH="$site" python3 -c \
    'import sys, zrboard; sys.exit(0 if len(zrboard.get_boards()) > 0 else "no installed boards")'
  echo "install check: the installed Python module imports and lists the installed boards"
fi
