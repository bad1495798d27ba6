#!/usr/bin/env bash
# Configures and builds the trees: build/native (host compiler, sanitizers),
# build/win64 and build/win32 (MinGW, optimised).
# Usage: scripts/build.sh [native|win64|win32|all]   (default: all)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
jobs=$(nproc)
[ "$jobs" -gt 2 ] && jobs=2 # the machine is shared

build_tree() {
    local name=$1
    shift
    local dir=$root/build/$name
    echo "== build $name"
    cmake -S "$root" -B "$dir" "$@" >"$root/build/$name.configure.log" ||
        { cat "$root/build/$name.configure.log"; return 1; }
    cmake --build "$dir" -j "$jobs"
}

native() {
    # -O0: at -O1 the sanitizers make libstdc++'s <regex> warn falsely.
    build_tree native -DCMAKE_BUILD_TYPE=Debug
}

windows() {
    build_tree "$1" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/$2.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_C_FLAGS_RELEASE="-O2 -DNDEBUG" -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG"
}

mkdir -p "$root/build"
case ${1:-all} in
native) native ;;
win64) windows win64 mingw-x86_64 ;;
win32) windows win32 mingw-i686 ;;
all) native && windows win64 mingw-x86_64 && windows win32 mingw-i686 ;;
*)
    echo "usage: $0 [native|win64|win32|all]" >&2
    exit 2
    ;;
esac
