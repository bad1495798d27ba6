#!/usr/bin/env bash
# Builds a benchmark target in the 64-bit cross build and runs its program
# under wine on a virtual display. BUILD and WINEPREFIX may name other
# places. Usage: run-under-wine.sh target program-in-build-tree [args...]
set -e
root=$(cd "$(dirname "$0")/../.." && pwd)
target=$1
program=$2
shift 2
build=${BUILD:-$root/build/win64}
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-x86_64.cmake"
fi
cmake --build "$build" -j2 --target "$target"
export WINEPREFIX=${WINEPREFIX:-$root/build/wineprefix}
export WINEDEBUG=${WINEDEBUG:--all}
xvfb-run -a wine "$build/$program" "$@"
