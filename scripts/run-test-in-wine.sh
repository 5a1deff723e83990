#!/bin/sh
# Runs a test program of the Windows edition in the build's Wine prefix: run-test-in-wine.sh PREFIX PROGRAM …
# Linux keeps only the lowest byte of the exit status, so the program's closing lines must also say that its tests passed.
set -eu

# With another encoding Wine cannot handle file names of every script.
export WINEPREFIX="$1" WINEDEBUG=-all DISPLAY= LC_ALL=C.UTF-8
shift

output=$(mktemp)
trap 'rm -f "$output"' EXIT
status=0
timeout 290 wine "$@" </dev/null >"$output" 2>&1 || status=$?
cat "$output"
if [ "$status" -ne 0 ]; then
    echo "run-test-in-wine: exit status $status" >&2
    exit 1
fi
if ! grep -q '^\[  PASSED  \] ' "$output" || grep -q '^\[  FAILED  \] ' "$output"; then
    echo "run-test-in-wine: the program did not say that its tests passed" >&2
    exit 1
fi
