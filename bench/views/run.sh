#!/usr/bin/env bash
# The text view on a generated file under wine, against wc -l of the same
# file as the floor. An argument sets the size in MB (1024 by default);
# KM_BENCH_RUNS how often each row is timed (5).
set -e
root=$(cd "$(dirname "$0")/../.." && pwd)
size=${1:-1024}
dir=$root/build/bench-views
file=$dir/views-$size.c
mkdir -p "$dir"
if [ ! -f "$file" ]; then
    yes "$(printf 'static int value(struct item* p, int n)\n{\n\tif (n > 3) /* clamp */\n\t\tn = 0;\n    return n * 7 + p->count;\n}\n')" |
        head -c $((size * 1024 * 1024)) >"$file"
fi
wc -l "$file" >/dev/null # the file in the page cache for both
runs=${KM_BENCH_RUNS:-5}
times=()
for _ in $(seq "$runs"); do
    start=$(date +%s%N)
    lines=$(wc -l <"$file")
    times+=($(( ($(date +%s%N) - start) / 1000000 )))
done
sorted=($(printf '%s\n' "${times[@]}" | sort -n))
echo "wc -l: $lines lines; $runs runs: fastest ${sorted[0]} ms, median ${sorted[$((runs / 2))]} ms, slowest ${sorted[$((runs - 1))]} ms"
export KM_BENCH_RUNS=$runs
"$root/bench/support/run-under-wine.sh" views_bench bench/views/views_bench.exe "Z:${file//\//\\}"
