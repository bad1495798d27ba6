#!/usr/bin/env bash
# Builds the compare and extraction benchmark natively, optimised and
# without the sanitizers of the test build, and runs it on files generated
# in build/bench-tools-data.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
cmake -S "$root" -B "$root/build/bench-native" -DCMAKE_BUILD_TYPE=Release -DKM_SANITIZE=OFF >/dev/null
cmake --build "$root/build/bench-native" --target tools_bench -j2 >/dev/null
mkdir -p "$root/build/bench-tools-data"
"$root/build/bench-native/bench/tools/tools_bench" "$root/build/bench-tools-data"
