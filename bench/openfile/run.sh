#!/usr/bin/env bash
# Builds the open/save benchmark in the 64-bit cross build and runs it under
# wine on a virtual display. BUILD and WINEPREFIX may name other places; an
# argument sets the size of the files in MB (20 by default).
set -e
root=$(cd "$(dirname "$0")/../.." && pwd)
build=${BUILD:-$root/build/win64}
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-x86_64.cmake"
fi
cmake --build "$build" -j2 --target openfile_bench
export WINEPREFIX=${WINEPREFIX:-$root/build/wineprefix}
export WINEDEBUG=${WINEDEBUG:--all}
exec xvfb-run -a wine "$build/bench/openfile/openfile_bench.exe" "$@"
