#!/usr/bin/env bash
# Runs a Windows program of the build under wine, in the prefix inside the
# build tree. ctest uses this as the cross build's emulator.
set -e
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX=${WINEPREFIX:-$here/build/wineprefix}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=}
exec wine "$@"
