#!/usr/bin/env bash
# Builds the replace benchmark in the 64-bit cross build, runs it under wine
# on a virtual display, then runs sed over the same files as the peer.
# BUILD and WINEPREFIX may name other places.
set -e
root=$(cd "$(dirname "$0")/../.." && pwd)
build=${BUILD:-$root/build/win64}
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-x86_64.cmake"
fi
cmake --build "$build" -j2 --target replace_bench
export WINEPREFIX=${WINEPREFIX:-$root/build/wineprefix}
export WINEDEBUG=${WINEDEBUG:--all}
dir=$(mktemp -d /tmp/kmreplace.XXXXXX)
trap 'rm -rf "$dir"' EXIT
xvfb-run -a wine "$build/bench/replace/replace_bench.exe" "Z:${dir//\//\\}"
for file in "$dir"/replace*.c; do
    start=$(date +%s.%N)
    hits=$(grep -o 'total' "$file" | wc -l)
    sed 's/total/sum/g' "$file" >"$file.sed"
    end=$(date +%s.%N)
    awk -v f="$(basename "$file")" -v s="$start" -v e="$end" -v h="$hits" \
        'BEGIN { printf "%s: sed s/total/sum/g %9.3f s %8d hits %11.0f hits/s (with the count by grep)\n", f, e - s, h, h / (e - s) }'
done
