#!/usr/bin/env bash
# Runs the open/save benchmark under wine; an argument sets the size of the
# files in MB (20 by default).
exec "$(dirname "$0")/../support/run-under-wine.sh" openfile_bench \
    bench/openfile/openfile_bench.exe "$@"
