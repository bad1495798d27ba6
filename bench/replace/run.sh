#!/usr/bin/env bash
# Runs the replace benchmark under wine, then sed over the same files as
# the peer.
set -e
dir=$(mktemp -d /tmp/kmreplace.XXXXXX)
trap 'rm -rf "$dir"' EXIT
"$(dirname "$0")/../support/run-under-wine.sh" replace_bench bench/replace/replace_bench.exe \
    "Z:${dir//\//\\}"
for file in "$dir"/replace*.c; do
    start=$(date +%s.%N)
    hits=$(grep -o 'total' "$file" | wc -l)
    sed 's/total/sum/g' "$file" >"$file.sed"
    end=$(date +%s.%N)
    awk -v f="$(basename "$file")" -v s="$start" -v e="$end" -v h="$hits" \
        'BEGIN { printf "%s: sed s/total/sum/g %9.3f s %8d hits %11.0f hits/s (with the count by grep)\n", f, e - s, h, h / (e - s) }'
done
