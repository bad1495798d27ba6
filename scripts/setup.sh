#!/usr/bin/env bash
# Installs, as root on Debian 12, whatever the build and the tests need and
# the machine lacks (with their recommends: wine draws fonts and X
# libraries from them; the print server without its own), and brings up the
# test printer. Does nothing, quickly, when everything is there.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

packages=(
    cmake make g++ clang libclang-rt-14-dev python3
    g++-mingw-w64-i686 g++-mingw-w64-i686-posix
    g++-mingw-w64-x86-64 g++-mingw-w64-x86-64-posix binutils-mingw-w64
    wine wine64 # wine brings the launcher, wine64 the 64-bit loader
    xvfb xauth imagemagick googletest
)
# The print server and the renderer of printed pages.
printing=(cups-daemon cups-client ghostscript)

installed() {
    dpkg-query -W -f='${db:Status-Abbrev}\n' "$1" 2>/dev/null | grep -q '^ii'
}

missing=()
missingPrinting=()
for package in "${packages[@]}"; do
    installed "$package" || missing+=("$package")
done
for package in "${printing[@]}"; do
    installed "$package" || missingPrinting+=("$package")
done

if [ $((${#missing[@]} + ${#missingPrinting[@]})) -gt 0 ]; then
    if [ "$(id -u)" -ne 0 ]; then
        echo "setup: missing packages: ${missing[*]} ${missingPrinting[*]}; run this as root to install them" >&2
        exit 1
    fi
    echo "setup: installing ${missing[*]} ${missingPrinting[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    [ ${#missing[@]} -eq 0 ] || apt-get install -y -qq "${missing[@]}" >/dev/null
    [ ${#missingPrinting[@]} -eq 0 ] ||
        apt-get install -y -qq --no-install-recommends "${missingPrinting[@]}" >/dev/null
fi
"$root/scripts/printer.sh"
