#!/bin/sh
# Installs the npm packages of the browser tests into a folder, once for each list of packages. The tests are skipped
# where that fails. Usage: browser-test-packages.sh FOLDER
set -eu

if [ $# -ne 1 ]; then
    echo "usage: browser-test-packages.sh FOLDER" >&2
    exit 2
fi
say() {
    echo "browser-test-packages: $*"
}
tests=$(cd "$(dirname "$0")/../tests/browser" && pwd)
if ! command -v npm >/dev/null || ! command -v chromium >/dev/null; then
    say "there is no npm or no chromium; the browser tests will be skipped"
    exit 0
fi
mkdir -p "$1"
cd "$1"
if cmp -s "$tests/package-lock.json" installed-package-lock.json; then
    exit 0
fi
cp "$tests/package.json" "$tests/package-lock.json" .
if npm ci --cache "$PWD/cache" --no-audit --no-fund --no-update-notifier --loglevel=error; then
    cp "$tests/package-lock.json" installed-package-lock.json
else
    say "npm cannot install the packages; the browser tests will be skipped"
fi
