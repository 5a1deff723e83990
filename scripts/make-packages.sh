#!/bin/sh
# Packs what was built, bit by bit the same whenever and wherever it is done: make-packages.sh TARGET BUILD…
# With --date it only prints the date that the files get, in seconds since 1970.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
# Files are as old as the change that they were made from; without its history, as the newest entry of the changelog.
if [ -z "${SOURCE_DATE_EPOCH-}" ]; then
    SOURCE_DATE_EPOCH=$(git -C "$root" log -1 --format=%ct 2>/dev/null || stat -c %Y "$root/CHANGELOG.md")
fi
export SOURCE_DATE_EPOCH
if [ "${1-}" = --date ]; then
    echo "$SOURCE_DATE_EPOCH"
    exit 0
fi
if [ $# -lt 2 ]; then
    echo "usage: $0 TARGET-FOLDER BUILD-FOLDER... | --date" >&2
    exit 2
fi
target=$1
shift
umask 022

mkdir -p "$target"
target=$(cd "$target" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM
for build in "$@"; do
    cpack --config "$build/CPackConfig.cmake" -B "$work" >"$work/log" 2>&1 || {
        cat "$work/log" >&2
        exit 1
    }
done
rm -f "$work"/*.json # what CPack tells the script that packs
for package in "$work"/orvel-coordsys-core[-_]*; do
    mv "$package" "$target"
    echo "make-packages: $target/${package##*/}"
done
