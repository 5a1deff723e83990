#!/bin/sh
# Packs the builds: make-packages.sh TARGET BUILD… The packages are the same bit by bit, whenever and wherever they are
# made. With --date it only prints the date of the files, in seconds since 1970.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
# Files get the date of the last commit, or without a history the date of the newest entry in the changelog.
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
rm -f "$work"/*.json # CPack's messages to the script that packs
for package in "$work"/orvel-coordsys-core[-_]*; do
    mv "$package" "$target"
    echo "make-packages: $target/${package##*/}"
done
