#!/bin/sh
# Runs the browser tests. Usage: run.sh PROGRAM FOLDER-OF-THE-NPM-PACKAGES. The exit status is 77 where a part is missing.
set -eu

skip() {
    echo "The browser tests are skipped: $1"
    exit 77
}

BROWSER_PROGRAM=$(command -v chromium) || skip "there is no chromium; scripts/install-dependencies.sh test installs it"
command -v node >/dev/null || skip "there is no node; scripts/install-dependencies.sh test installs it"
[ -d "$2/node_modules/playwright-core" ] || skip "$2 has no playwright-core; scripts/browser-test-packages.sh $2 brings it"
export BROWSER_PROGRAM ORVELCS_PROGRAM="$1" BROWSER_PACKAGES="$2"
cd "$(dirname "$0")"
exec node --test --test-reporter=spec .
