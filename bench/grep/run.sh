#!/usr/bin/env bash
# The global search over a generated tree of 2,000 files and 200 MB: under
# wine through its dialog into a log, beside grep -rn over the same tree in
# the same run and the engine's line scan natively as the floor. The tree
# stays in build/bench-grep-data for the next run.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
# Every row runs on one processor: under wine each file call is a round
# trip to its server, and on a machine of two processors waking the server
# on the other one costs more than the call (the files alone read 2.5 times
# slower). KM_BENCH_CPUS=all lets the rows run anywhere.
pin=(taskset -c 1)
[ "${KM_BENCH_CPUS:-}" = all ] && pin=()
data=$root/build/bench-grep-data
cmake -S "$root" -B "$root/build/bench-native" -DCMAKE_BUILD_TYPE=Release -DKM_SANITIZE=OFF >/dev/null
cmake --build "$root/build/bench-native" --target grep_floor -j2 >/dev/null
floor=$root/build/bench-native/bench/grep/grep_floor
if [ "$(ls "$data" 2>/dev/null | wc -l)" != 2000 ]; then
    rm -rf "$data" && mkdir -p "$data"
    "$floor" make "$data"
fi
rows=$(mktemp)
trap 'rm -f "$rows" "$rows.out"' EXIT
cat "$data"/*.c >/dev/null # the same warm cache for all
peer() { # text, grep's options, label
    local start end
    start=$(date +%s.%N)
    "${pin[@]}" grep -rn $2 "$1" "$data" >"$rows.out" || true
    end=$(date +%s.%N)
    echo "$1|$3|$(awk -v s="$start" -v e="$end" 'BEGIN { printf "%.3f", e - s }')|$(wc -l <"$rows.out")" >>"$rows"
}
for run in 1 2; do
    peer frobnicate "" "grep -rn (run $run)"
    peer tally -w "grep -rnw (run $run)"
done
"${pin[@]}" "$floor" scan "$data" frobnicate >>"$rows"
"${pin[@]}" "$floor" scan "$data" tally word >>"$rows"
"${pin[@]}" "$root/bench/support/run-under-wine.sh" grep_bench bench/grep/grep_bench.exe \
    "Z:${data//\//\\}" | tr -d '\r' >>"$rows"
# Each row against the second grep run of its text.
awk -F'|' '
    { text[NR] = $1; what[NR] = $2; secs[NR] = $3; hits[NR] = $4
      if ($2 ~ /run 2/) base[$1] = $3 }
    END {
        printf "%-10s %-36s %9s %8s %9s\n", "text", "", "seconds", "hits", "x grep"
        for (i = 1; i <= NR; i++)
            if (what[i] != "")
                printf "%-10s %-36s %9.3f %8d %9.2f\n", text[i], what[i], secs[i], hits[i],
                    secs[i] / base[text[i]]
    }' "$rows"
