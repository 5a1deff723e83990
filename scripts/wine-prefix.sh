#!/bin/sh
# Makes the Wine prefix for the tests of the Windows edition unless it exists: wine-prefix.sh FOLDER
set -eu

if [ -f "$1/system.reg" ]; then
    exit 0
fi
mkdir -p "$1"
WINEPREFIX=$(cd "$1" && pwd)
export WINEPREFIX
# The tests have no windows and need nothing that Wine offers to download.
export WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml=' DISPLAY=
echo "wine-prefix: making $1"
wineboot --init >/dev/null 2>&1 </dev/null
wineserver -w
