#!/usr/bin/env bash
# Plants the small faults of scripts/mutants.txt one at a time in a copy of
# the tree, rebuilds the test programs named for each, runs them, and says
# whether the tests caught the fault ("killed") or not ("survived").
# Run on demand, not by CI; it takes a while. The work tree is not touched:
# everything happens under build/mutants.
# Usage: scripts/mutants.sh [-k keyword] [-l]
#   -k  only the faults whose line holds the keyword
#   -l  list the faults and stop
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
list="$root/scripts/mutants.txt"
keyword=
listOnly=
while getopts "k:l" option; do
    case $option in
    k) keyword=$OPTARG ;;
    l) listOnly=1 ;;
    *) exit 2 ;;
    esac
done

faults=$(grep -v '^\s*#' "$list" | grep -v '^\s*$' | grep -F -- "$keyword" || true)
if [ -z "$faults" ]; then
    echo "no fault holds '$keyword'" >&2
    exit 2
fi
if [ -n "$listOnly" ]; then
    echo "$faults"
    exit 0
fi

work=${KM_MUTANTS_DIR:-$root/build/mutants} # where the copy is built
src=$work/src
report=$work/report.txt
mkdir -p "$src"
(cd "$root" && git ls-files -co --exclude-standard -z | grep -zv '^build/' | xargs -0 tar cf -) |
    tar xf - -C "$src"

"$root/scripts/setup.sh"
echo "== building the copy"
cmake -S "$src" -B "$work/native" -DCMAKE_BUILD_TYPE=Debug >"$work/native.log"
cmake --build "$work/native" -j2 >>"$work/native.log"
cmake -S "$src" -B "$work/win64" -DCMAKE_TOOLCHAIN_FILE="$src/cmake/mingw-x86_64.cmake" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" >"$work/win64.log"
cmake --build "$work/win64" -j2 >>"$work/win64.log"

. "$root/scripts/wine-session.sh"
trap km_wine_end EXIT
km_xvfb_start
km_wine_start "$work/wineprefix" N persistent

# The tree of a test program: the native ones run on the host.
tree_of() {
    case $1 in
    test_app_core | test_edit_core | test_help_core | test_pattern | test_search_core | test_tools_core | test_ui_core | test_views_core) echo "$work/native" ;;
    *) echo "$work/win64" ;;
    esac
}

# Replaces the one occurrence of $2 in file $1 by $3; fails unless there is
# exactly one.
plant() {
    python3 - "$@" <<'PY'
import sys
path, old, new = sys.argv[1:4]
text = open(path, encoding="latin-1").read()
if text.count(old) != 1:
    sys.exit(1)
open(path, "w", encoding="latin-1").write(text.replace(old, new))
PY
}

total=0 killed=0 survived=0
: >"$report"
# Fields are separated by " @@ ", which code does not hold.
fields=$(printf '%s\n' "$faults" | python3 -c '
import sys
for line in sys.stdin:
    if line.strip():
        print("\x1f".join(x.strip() for x in line.rstrip("\n").split(" @@ ")))')
while IFS=$'\x1f' read -r file original replacement tests description; do
    cp "$src/$file" "$work/pristine"
    if ! plant "$src/$file" "$original" "$replacement"; then
        echo "ERROR    $file: not found exactly once: $original" | tee -a "$report"
        continue
    fi
    total=$((total + 1))
    result=survived
    for test in $tests; do
        tree=$(tree_of "$test")
        targets=$test
        [ "$test" = e2e_edit_save ] && targets="$test kelmar"
        if ! cmake --build "$tree" --target $targets -j2 </dev/null >"$work/last-build.log" 2>&1; then
            result="killed (build)"
            break
        fi
        if ! (cd "$tree" && ctest -R "^$test\$" --timeout 300 </dev/null >"$work/last-test.log" 2>&1); then
            result="killed ($test)"
            break
        fi
    done
    cp "$work/pristine" "$src/$file"
    touch "$src/$file"
    case $result in
    killed*) killed=$((killed + 1)) ;;
    *) survived=$((survived + 1)) ;;
    esac
    printf '%-22s %s: %s\n' "$result" "$file" "$description" | tee -a "$report"
done <<<"$fields"

# The copy is rebuilt as it was, so the next run starts from the pristine tree.
for tree in "$work/native" "$work/win64"; do
    cmake --build "$tree" -j2 >/dev/null 2>&1 || true
done
percent=0
[ "$total" -gt 0 ] && percent=$((100 * killed / total))
echo "mutants: $total, killed: $killed, survived: $survived ($percent %)" | tee -a "$report"
