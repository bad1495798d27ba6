#!/usr/bin/env bash
# Installs, as root on Debian 12, whatever the build and the tests need and
# the machine lacks (with their recommends: wine draws fonts and X
# libraries from them). Does nothing, quickly, when everything is there.
set -euo pipefail

packages=(
    cmake make g++ clang libclang-rt-14-dev python3
    g++-mingw-w64-i686 g++-mingw-w64-i686-posix
    g++-mingw-w64-x86-64 g++-mingw-w64-x86-64-posix binutils-mingw-w64
    wine wine64 # wine brings the launcher, wine64 the 64-bit loader
    xvfb xauth imagemagick googletest
)

installed() {
    dpkg-query -W -f='${db:Status-Abbrev}\n' "$1" 2>/dev/null | grep -q '^ii'
}

missing=()
for package in "${packages[@]}"; do
    installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
    echo "setup: missing packages: ${missing[*]}; run this as root to install them" >&2
    exit 1
fi
echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq "${missing[@]}" >/dev/null
