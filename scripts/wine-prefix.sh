#!/bin/sh
# Makes the Wine prefix that the tests of the Windows edition run in, where there is none yet: wine-prefix.sh FOLDER
set -eu

if [ -f "$1/system.reg" ]; then
    exit 0
fi
mkdir -p "$1"
WINEPREFIX=$(cd "$1" && pwd)
export WINEPREFIX
# Nothing here has a window, and what Wine offers to download is not needed.
export WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml=' DISPLAY=
echo "wine-prefix: making $1"
wineboot --init >/dev/null 2>&1 </dev/null
wineserver -w
