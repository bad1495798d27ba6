#!/usr/bin/env bash
# Installs what is missing, builds the program and starts it under wine with
# the given files. Only 64-bit wine is installed, so it runs the 64-bit build
# of kelmar.exe; the 32-bit one is built beside it in build/win32.
# Without DISPLAY it runs on a virtual display for a few seconds and leaves a
# screenshot in build/screenshot.png.
# Usage: scripts/start.sh [files...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

"$root/scripts/setup.sh"
"$root/scripts/build.sh" win32
"$root/scripts/build.sh" win64

exe=$root/build/win64/kelmar.exe
if [ ! -f "$exe" ]; then
    echo "start: $exe was not built: the program's entry is not in the tree yet" >&2
    exit 1
fi

# Absolute Unix paths become paths on wine's drive Z:, which is the root;
# relative names, switches and references like prog.c(12,5) pass as they are.
args=()
for arg in "$@"; do
    if [[ $arg == /* && ( -e $arg || $arg == /*/* ) ]]; then
        arg="Z:${arg//\//\\}"
    fi
    args+=("$arg")
done

. "$root/scripts/wine-session.sh"
prefix=$root/build/wineprefix-run

if [ -n "${DISPLAY:-}" ]; then
    km_wine_start "$prefix" Y
    exec wine "$exe" "${args[@]}"
fi

trap km_wine_end EXIT
km_xvfb_start
km_wine_start "$prefix" N persistent
wine "$exe" "${args[@]}" </dev/null >/dev/null 2>&1 &
program=$!
sleep "${KM_START_SECONDS:-5}"
if ! kill -0 "$program" 2>/dev/null; then
    status=0
    wait "$program" || status=$?
    echo "start: kelmar.exe ended by itself with exit code $status" >&2
fi
import -window root "$root/build/screenshot.png"
echo "start: no DISPLAY, so it ran on a virtual display; screenshot in $root/build/screenshot.png"
