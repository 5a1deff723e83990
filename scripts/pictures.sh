#!/bin/sh
# Makes the pictures of the documentation, or tells whether they are what the program makes. Usage:
# pictures.sh [--check] PROGRAM. The exit status is 77 where PROJ or its data are other
# ones than those of the pictures.
set -eu

check=no
if [ "${1-}" = --check ]; then
    check=yes
    shift
fi
if [ $# -ne 1 ] || [ ! -x "$1" ]; then
    echo "usage: pictures.sh [--check] PROGRAM" >&2
    exit 2
fi
program=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
pictures=$(cd "$(dirname "$0")/../docs" && pwd)/pictures
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT
trap 'exit 1' HUP INT TERM

# draw NAME WORD...: runs the program, which writes the picture.
draw() {
    name=$1
    shift
    "$program" --quiet "$@" -o "$made/$name.svg" >/dev/null
}

draw ed50-to-wgs84 transformation compare EPSG:4230 EPSG:4326 --bbox=-11,35,32,71 --between EPSG:1133 EPSG:1311
if ! draw ntf-to-etrs89 transformation compare EPSG:4275 EPSG:4258; then
    echo "pictures: skipped: the grid of NTF to ETRS89 is missing; Debian's package proj-data has it"
    exit 77
fi
# shellcheck disable=SC2046 # each code is a word
draw utm-zones map $(seq -f 'EPSG:326%02g' 1 60) $(seq -f 'EPSG:327%02g' 1 60)

if [ "$check" = no ]; then
    mkdir -p "$pictures"
    cp "$made"/*.svg "$pictures"
    echo "pictures: made in $pictures"
    exit 0
fi
versions() {
    grep -ho '>PROJ [0-9.]*, [^<]*<' "$1"
}
for picture in "$made"/*.svg; do
    name=$(basename "$picture")
    if [ "$(versions "$picture")" != "$(versions "$pictures/$name")" ]; then
        echo "pictures: skipped: made with$(versions "$pictures/$name" | tr '<>' '  ')"
        exit 77
    fi
    if ! cmp "$picture" "$pictures/$name"; then
        echo "pictures: $name is not what the program draws; make pictures draws it anew" >&2
        exit 1
    fi
done
