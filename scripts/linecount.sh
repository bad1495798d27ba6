#!/usr/bin/env bash
# Lines of code against lines of tests (C++ sources, headers and resource
# scripts), and their ratio.
set -euo pipefail
cd "$(dirname "$0")/.."
count() { git ls-files -co --exclude-standard -- "$@" | grep -E '\.(cpp|h|rc)$' | xargs cat | wc -l; }
code=$(count app edit search ui framework resources views tools project print help)
tests=$(count tests)
echo "code $code, tests $tests, ratio $(awk -v t="$tests" -v c="$code" 'BEGIN { printf "%.2f", t / c }')"
