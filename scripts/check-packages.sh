#!/bin/sh
# Checks the packages of `make package`: check-packages.sh [FOLDER], by default build/packages. Makes them again in a copy
# of the tree and compares them; unpacks each into an empty folder and runs it there; builds a program of another project
# against each. Installs nothing and needs no privileges.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
packages=$(cd "${1:-$root/build/packages}" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM

say() {
    echo "check-packages: $*"
}

fail() {
    say "$*" >&2
    exit 1
}

# Finds the one package with that name.
package() {
    set -- "$packages"/$1
    [ $# -eq 1 ] && [ -f "$1" ] || fail "expected one package, found: $*"
    echo "$1"
}

quietly() { # LOG COMMAND…
    log=$1
    shift
    "$@" >"$log" 2>&1 </dev/null || {
        tail -n 40 "$log" >&2
        fail "failed: $*"
    }
}

make_again() { # in a copy of the sources at a path of another length
    copy=$work/made_again/in/another/place
    mkdir -p "$copy"
    tar -C "$root" --exclude=./build --exclude=./.git -cf - . | tar -C "$copy" -xf -
    SOURCE_DATE_EPOCH=$("$root/scripts/make-packages.sh" --date) # the copy has no history from which to take it
    export SOURCE_DATE_EPOCH
    (
        cd "$copy"
        for preset in release windows; do
            quietly "$work/$preset.log" cmake --preset "$preset" -DBUILD_TESTING=OFF
            quietly "$work/$preset.log" cmake --build "build/$preset" --target OrvelCoordsysCore orvelcs
        done
        quietly "$work/again.log" scripts/make-packages.sh "$work/again" build/windows build/release
    )
}

compare() {
    for file in "$packages"/*; do
        cmp "$file" "$work/again/${file##*/}" || fail "made again, ${file##*/} is another"
        say "${file##*/}: $(stat -c %s "$file") bytes, the same when made again"
    done
}

# Does the main job with a program that finds only the files beside it. RUN starts the program.
do_main_job() { # FOLDER PROGRAM…
    mkdir -p "$1"
    cd "$1"
    shift
    for step in 'new plan.qedb' 'assign EPSG:25832 plan.qedb' 'show plan.qedb'; do
        # Word splitting is intended: no argument has a space.
        env -u PROJ_LIB -u PROJ_DATA "$@" $step >"$work/output" 2>&1 </dev/null || {
            cat "$work/output" >&2
            fail "$step: failed"
        }
    done
    grep -q 'ETRS89 / UTM zone 32N' "$work/output" || fail "show does not tell the system's name"
    cd "$root"
}

check_links() { # FOLDER with the first page
    grep -o ']([^)#]*' "$1/README.md" | sed 's/^](//' | while read -r link; do
        case $link in *://*) continue ;; esac
        [ -e "$1/$link" ] || fail "the first page leads to $link, which is not there"
    done
}

build_consumer() { # NAME PREFIX OPTIONS…
    name=$1
    prefix=$2
    shift 2
    quietly "$work/consumer.log" cmake -S "$root/tests/packages/consumer" -B "$work/consumer-$name" -G Ninja \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$prefix" "$@"
    quietly "$work/consumer.log" cmake --build "$work/consumer-$name"
}

build_by_pkg_config() { # NAME PREFIX COMPILER OPTIONS…
    program=$work/pkg-config-$1
    PKG_CONFIG_PATH=$(dirname "$(find "$2/lib" -name orvel-coordsys-core.pc)")
    export PKG_CONFIG_PATH
    shift 2
    # The flags are quoted for a shell, as the folder's name may have spaces.
    eval "set -- \"\$@\" $(pkg-config --cflags --libs orvel-coordsys-core)"
    compiler=$1
    shift
    quietly "$work/consumer.log" "$compiler" -std=c++20 "$root/tests/packages/consumer/consumer.cpp" -o "$program" "$@"
}

check_linux_tree() { # NAME PREFIX
    for file in "$2"/bin/orvelcs "$2"/lib/*/orvel-coordsys-core/*.so; do
        case $(ldd "$file") in *'not found'*) ldd "$file" >&2 && fail "$file misses libraries" ;; esac
    done
    check_links "$2/share/doc/orvel-coordsys-core"
    do_main_job "$work/drawings-$1" "$2/bin/orvelcs"
    build_consumer "$1" "$2"
    quietly "$work/consumer.log" "$work/consumer-$1/consumer"
    build_by_pkg_config "$1" "$2" g++
    quietly "$work/consumer.log" "$work/pkg-config-$1"
    say "$1: works where it was unpacked, and so do programs built against it through CMake and pkg-config"
}

check_debian_package() {
    deb=$(package '*.deb')
    dpkg-deb -x "$deb" "$work/debian"
    depends=$(dpkg-deb -f "$deb" Depends)
    for library in libc6 libproj libstdc++6; do
        case $depends in *"$library"*) ;; *) fail "the package does not depend on $library: $depends" ;; esac
    done
    say "Depends: $depends"
    # The project has no address for mail (docs/packages.md).
    if command -v lintian >/dev/null; then
        quietly "$work/lintian.log" lintian --fail-on error \
            --suppress-tags malformed-contact,bogus-mail-host-in-debian-changelog "$deb"
        say "deb: lintian finds no error"
    else
        say "deb: not looked at by lintian, which is not installed"
    fi
    check_linux_tree deb "$work/debian/usr"
}

check_archive() {
    mkdir "$work/archive"
    archive=$(package '*.tar.gz')
    tar -C "$work/archive" -xzf "$archive"
    set -- "$work"/archive/*
    check_linux_tree tar.gz "$1"
}

check_windows() {
    folder="$work/Büro für Vermessung 测量"
    archive=$(package '*.zip')
    mkdir "$folder"
    (cd "$folder" && cmake -E tar xf "$archive")
    set -- "$folder"/*
    prefix=$1
    check_links "$prefix"
    WINEPREFIX=$work/wine
    export WINEPREFIX WINEDEBUG=-all
    "$root/scripts/wine-prefix.sh" "$WINEPREFIX"
    do_main_job "$work/drawings-zip" wine "$prefix/bin/orvelcs.exe"
    build_consumer zip "$prefix" -DCMAKE_SYSTEM_NAME=Windows \
        -DCMAKE_CXX_COMPILER=x86_64-w64-mingw32-g++-posix
    build_by_pkg_config zip.exe "$prefix" x86_64-w64-mingw32-g++-posix -static
    cp "$work/consumer-zip/consumer.exe" "$work/pkg-config-zip.exe" "$prefix/bin"
    quietly "$work/consumer.log" wine "$prefix/bin/consumer.exe"
    quietly "$work/consumer.log" wine "$prefix/bin/pkg-config-zip.exe"
    wineserver -k
    say "zip: works where it was unpacked, and so do programs built against it through CMake and pkg-config"
}

check_archive
check_debian_package
check_windows
make_again
compare
say "done"
