#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang under AddressSanitizer and
# UndefinedBehaviorSanitizer and runs each for a bounded time or number of runs.
#
#   scripts/fuzz.sh [--time SECONDS] [--runs N] [--build DIR] [--no-build] [TARGET...]
#
# Each target runs until SECONDS have passed or N inputs have run, whichever
# comes first; default: every target for 30 seconds. The corpus each run grows is kept in
# DIR/fuzz/corpus/TARGET (seeds made afresh by fuzz/make_corpus.py),
# a crashing input in DIR/fuzz/artifacts/TARGET, the log in DIR/fuzz/logs.
# Exit status 1 when a target found something, 2 for a bad command line.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
usage() { sed -n '2,12s/^# \{0,1\}//p' "$0"; }
limit=()
build="$root/build-fuzz"
do_build=1
targets=()
while [ $# -gt 0 ]; do
  case "$1" in
    --time) [ $# -ge 2 ] || { usage >&2; exit 2; }; limit+=(-max_total_time="$2"); shift 2 ;;
    --runs) [ $# -ge 2 ] || { usage >&2; exit 2; }; limit+=(-runs="$2"); shift 2 ;;
    --build) [ $# -ge 2 ] || { usage >&2; exit 2; }; build=$(realpath -m "$2"); shift 2 ;;
    --no-build) do_build=0; shift ;;
    -h|--help) usage; exit 0 ;;
    -*) echo "fuzz.sh: unknown option '$1'" >&2; usage >&2; exit 2 ;;
    *) targets+=("$1"); shift ;;
  esac
done
all=(board_reader schema1_reader xml_tree preferences utilities migration_models)
[ ${#targets[@]} -gt 0 ] || targets=("${all[@]}")
[ ${#limit[@]} -gt 0 ] || limit=(-max_total_time=30)
for t in "${targets[@]}"; do
  [[ " ${all[*]} " == *" $t "* ]] || { echo "fuzz.sh: no target '$t' (targets: ${all[*]})" >&2; exit 2; }
done

if [ "$do_build" = 1 ]; then
  launcher=()
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DZR_FUZZ=ON \
    -DZR_BUILD_TESTS=OFF -DZR_BUILD_BENCH=OFF "${launcher[@]}" >/dev/null
  cmake --build "$build" -j"$(nproc)" --target $(printf 'fuzz_%s ' "${targets[@]}")
fi

work="$build/fuzz"
# Seeds of this run alone: runs side by side must not remove each other's.
seeds="$work/seeds-$$"
trap 'rm -rf "$seeds"' EXIT
python3 "$root/fuzz/make_corpus.py" "$seeds" >/dev/null
mkdir -p "$work/logs"
failed=()
printf '%-18s %12s %8s %8s %8s  %s\n' target executions seconds cov ft result
for t in "${targets[@]}"; do
  mkdir -p "$work/corpus/$t" "$work/artifacts/$t"
  log="$work/logs/$t.log"
  start=$(date +%s)
  status=0
  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    "$build/bin/fuzz_$t" "${limit[@]}" -dict="$seeds/zr_board.dict" -timeout=30 -rss_limit_mb=2560 \
    -print_final_stats=1 -artifact_prefix="$work/artifacts/$t/" \
    "$work/corpus/$t" "$seeds/corpus/$t" >"$log" 2>&1 || status=$?
  secs=$(( $(date +%s) - start ))
  execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  cov=$(grep -o 'cov: [0-9]*' "$log" | tail -1 | cut -d' ' -f2)
  ft=$(grep -o 'ft: [0-9]*' "$log" | tail -1 | cut -d' ' -f2)
  result=ok
  if [ "$status" != 0 ]; then
    result="FOUND: $(ls -t "$work/artifacts/$t" | head -1) (log $log)"
    failed+=("$t")
  fi
  printf '%-18s %12s %8s %8s %8s  %s\n' "$t" "${execs:-?}" "$secs" "${cov:-?}" "${ft:-?}" "$result"
done
if [ ${#failed[@]} -gt 0 ]; then
  echo "fuzz.sh: findings in ${failed[*]}: reproduce with $build/bin/fuzz_TARGET ARTIFACT," \
       "then add the input to fuzz/regressions/TARGET/" >&2
  exit 1
fi
