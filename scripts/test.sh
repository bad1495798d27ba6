#!/usr/bin/env bash
# Builds everything and runs every test: the native tests, then the window
# tests and the end-to-end tests under wine, inside one virtual display and
# one wineserver that stay up for the whole run and end with it.
# Arguments go to ctest in both trees, e.g. scripts/test.sh -R shell
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

"$root/scripts/setup.sh"
"$root/scripts/build.sh" all

passed=0
failed=0

# Runs ctest in a tree and adds its closing count to the totals.
run_ctest() {
    local dir=$1 log status=0 summary
    shift
    log=$(mktemp)
    (cd "$dir" && ctest --output-on-failure --timeout 300 "$@") </dev/null 2>&1 | tee "$log" ||
        status=$?
    summary=$(grep -E '[0-9]+ tests failed out of [0-9]+' "$log" | tail -1 || true)
    rm -f "$log"
    if [[ $summary =~ ([0-9]+)\ tests\ failed\ out\ of\ ([0-9]+) ]]; then
        passed=$((passed + BASH_REMATCH[2] - BASH_REMATCH[1]))
        failed=$((failed + BASH_REMATCH[1]))
    elif [ "$status" -ne 0 ]; then
        failed=$((failed + 1)) # ctest itself failed
    fi
}

. "$root/scripts/wine-session.sh"
trap km_wine_end EXIT

echo "== native tests"
run_ctest "$root/build/native" -j 2 "$@"
echo "== window tests under wine (64-bit)"
km_xvfb_start
km_wine_start "$root/build/wineprefix" N persistent
run_ctest "$root/build/win64" "$@"

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
