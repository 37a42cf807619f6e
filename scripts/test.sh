#!/usr/bin/env bash
# Installs what is needed, builds, and runs every test (normal build, then a
# sanitizer build of the whole suite unless ZR_SKIP_SANITIZE=1, then short
# fuzzing runs unless ZR_SKIP_FUZZ=1).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup-deps.sh"
jobs=$(nproc)
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$root/build" -j"$jobs"
(cd "$root/build" && ctest --output-on-failure -j"$jobs")
"$root/scripts/install-check.sh" "$root/build"
if [ "${ZR_SKIP_SANITIZE:-0}" != 1 ]; then
  cmake -S "$root" -B "$root/build-asan" -DCMAKE_BUILD_TYPE=Debug -DZR_SANITIZE=ON -DZR_BUILD_BENCH=OFF >/dev/null
  cmake --build "$root/build-asan" -j"$jobs"
  (cd "$root/build-asan" && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
     ctest --output-on-failure -j"$jobs")
fi

# Fuzzing: every target of fuzz/ for a short bounded time under the sanitizers
# (clang build in build-fuzz; ZR_FUZZ_SECONDS per target, 30 by default).
if [ "${ZR_SKIP_FUZZ:-0}" != 1 ]; then
  "$root/scripts/fuzz.sh" --time "${ZR_FUZZ_SECONDS:-30}"
fi
