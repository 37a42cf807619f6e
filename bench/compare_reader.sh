#!/bin/sh
# Runs two builds of bench_reader in turn, ROUNDS times each, and prints the
# median and the least CPU time of each benchmark for both and their ratios: a change to the
# reader is measured against the build before it on the same machine at the
# same time, which a loaded machine needs.
#   bench/compare_reader.sh BEFORE/bench_reader AFTER/bench_reader [ROUNDS]
set -eu
if [ $# -lt 2 ]; then
    echo "usage: $0 BEFORE_BENCH_READER AFTER_BENCH_READER [ROUNDS]" >&2
    exit 2
fi
before=$1 after=$2 rounds=${3:-2}
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
i=1
while [ "$i" -le "$rounds" ]; do
    for which in before after; do
        eval bin=\$$which
        "$bin" --benchmark_filter='BM_ReadBoard|BM_ReadTrees|BM_SaxBaseline' \
            --benchmark_out="$out/$which-$i.json" --benchmark_out_format=json > /dev/null 2>&1
    done
    i=$((i + 1))
done
python3 - "$out" <<'PY'
import glob, json, os, statistics, sys
times = {}
for path in glob.glob(os.path.join(sys.argv[1], "*.json")):
    which = os.path.basename(path).split("-")[0]
    for b in json.load(open(path))["benchmarks"]:
        if b.get("run_type") == "iteration":
            times.setdefault(b["run_name"], {}).setdefault(which, []).append(b["cpu_time"])
# The least time of each is the one that the machine's other load spoiled least.
print("%-16s %10s %10s %8s   %10s %10s %8s" % ("benchmark", "before ms", "after ms", "ratio",
                                             "before min", "after min", "ratio"))
for name in sorted(times):
    b, a = times[name]["before"], times[name]["after"]
    mb, ma = statistics.median(b), statistics.median(a)
    print("%-16s %10.3f %10.3f %8.3f   %10.3f %10.3f %8.3f" % (name, mb, ma, ma / mb, min(b), min(a), min(a) / min(b)))
PY
