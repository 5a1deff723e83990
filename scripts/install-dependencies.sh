#!/bin/sh
# Installs the Debian packages that a target of the Makefile needs, or with --check only names them.
# If nothing is missing, it changes nothing and needs no privileges.
set -eu

demo_packages='g++ cmake ninja-build make libproj-dev proj-data libsqlite3-dev libsqlitecpp-dev libxxhash-dev nlohmann-json3-dev libcli11-dev libfmt-dev libutfcpp-dev libexpected-dev'
test_packages="$demo_packages libgtest-dev libgmock-dev clang libclang-rt-dev proj-bin gdal-bin python3-gdal parallel jq python3-jsonschema mandoc zsh fish pkg-config file dpkg-dev"
# Node.js from elsewhere brings its own npm, with which Debian's does not agree.
browser_packages=chromium
command -v npm >/dev/null || browser_packages="$browser_packages nodejs npm"
lint_packages="$test_packages clang-format clang-tidy python3 python3-yaml"
coverage_packages="$test_packages gcovr"
valgrind_packages="$test_packages valgrind"
mutate_packages="$test_packages git python3 python3-clang"
bench_packages="$demo_packages libbenchmark-dev"
bench_peers_packages="$demo_packages libtiff-dev proj-bin dpkg-dev"
# The compiler and tools of scripts/windows-libraries.sh, and Wine.
windows_packages="$demo_packages g++-mingw-w64-x86-64-posix dpkg-dev tcl sqlite3 libsqlite3-0 googletest wine wine64"
package_packages="$windows_packages pkg-config file zip"
docs_packages='make doxygen python3'

usage() {
    echo "usage: $0 [--check] demo|test|lint|coverage|valgrind|mutate|fuzz|bench|bench-peers|windows|package|docs" >&2
    exit 2
}

say() {
    echo "install-dependencies: $*"
}

is_installed() {
    dpkg-query --show --showformat='${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

missing_among() {
    for package in "$@"; do
        is_installed "$package" || printf ' %s' "$package"
    done
}

as_administrator() {
    if [ "$(id -u)" -eq 0 ]; then
        env DEBIAN_FRONTEND=noninteractive "$@"
    else
        sudo env DEBIAN_FRONTEND=noninteractive "$@"
    fi
}

check_only=no
if [ "${1-}" = --check ]; then
    check_only=yes
    shift
fi
[ $# -eq 1 ] || usage
target=$1
case $target in
    demo) packages=$demo_packages ;;
    test) packages="$test_packages $browser_packages" ;;
    lint) packages=$lint_packages ;;
    coverage) packages=$coverage_packages ;;
    valgrind) packages=$valgrind_packages ;;
    mutate) packages=$mutate_packages ;;
    fuzz) packages=$test_packages ;;
    bench) packages=$bench_packages ;;
    bench-peers) packages=$bench_peers_packages ;;
    windows) packages=$windows_packages ;;
    package) packages=$package_packages ;;
    docs) packages=$docs_packages ;;
    *) usage ;;
esac

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    say "this system has no apt-get; what '$target' needs goes by these names in Debian: $packages" >&2
    exit 0 # the tools may have other names here, and the build reports a missing one
fi

# Word splitting is intended here and below: these are lists of package names.
missing=$(missing_among $packages)
if [ -z "$missing" ]; then
    say "everything that '$target' needs is installed"
    exit 0
fi

command="apt-get update && apt-get install --no-install-recommends$missing"
if [ "$check_only" = yes ]; then
    say "missing:$missing" >&2
    say "install with: $0 $target (as root or with sudo)" >&2
    exit 1
fi
if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
    say "missing:$missing" >&2
    say "there is no sudo here; run as root: $command" >&2
    exit 1
fi

say "installing$missing"
if ! as_administrator apt-get -qq update ||
    ! as_administrator apt-get -qq --yes --no-install-recommends -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300 \
        install $missing >/dev/null; then
    say "failed; to install by hand, run as root: $command" >&2
    exit 1
fi
say "done"
