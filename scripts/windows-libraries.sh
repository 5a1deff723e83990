#!/bin/sh
# Cross-builds what the Windows edition is linked with, once, into a folder that every build shares: PROJ, SQLite
# and SQLiteCpp from Debian's sources, as static libraries, GoogleTest from Debian's package of its sources, and links to the
# header-only libraries that the machine has installed. With --where it only prints the folder.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
prefix=${ORVEL_WINDOWS_LIBRARIES:-${XDG_CACHE_HOME:-$HOME/.cache}/orvel-coordsys-core/windows-libraries}
if [ "${1-}" = --where ]; then
    echo "$prefix"
    exit 0
fi

host=x86_64-w64-mingw32
jobs=$(nproc 2>/dev/null || echo 2)
log=$prefix/build.log

say() {
    echo "windows-libraries: $*"
}

# What the folder was made of: other versions or another recipe make it anew.
recipe() {
    cksum <"$root/scripts/windows-libraries.sh"
    cksum <"$root/scripts/fetch-debian-sources.sh"
    cksum <"$root/cmake/mingw-w64.cmake"
    dpkg-query --show libproj-dev libsqlite3-0 libsqlitecpp-dev googletest g++-mingw-w64-x86-64-posix
}

build_sqlite() {
    mkdir sqlite
    (
        cd sqlite
        ../sqlite3-*/configure --disable-tcl
        make sqlite3.c sqlite3.h
        "$host-gcc-posix" -O2 -w -DSQLITE_ENABLE_RTREE -DSQLITE_OMIT_LOAD_EXTENSION -c sqlite3.c
        "$host-ar" rcs "$prefix/lib/libsqlite3.a" sqlite3.o
        cp sqlite3.h "$prefix/include"
    )
}

cross_build() { # NAME SOURCES OPTIONS…
    name=$1
    sources=$2
    shift 2
    cmake -S "$sources" -B "$name" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" \
        -DORVEL_WINDOWS_LIBRARIES="$prefix" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" \
        -DBUILD_SHARED_LIBS=OFF "$@"
    cmake --build "$name" --parallel "$jobs"
    cmake --install "$name"
}

# The folder that the data are installed in is of no use on the machine that the library gets to, and tells who built it.
build_proj() {
    cross_build proj proj-[0-9]* -DENABLE_TIFF=OFF -DENABLE_CURL=OFF -DBUILD_APPS=OFF -DBUILD_TESTING=OFF \
        -DCMAKE_C_FLAGS=-UPROJ_DATA -DCMAKE_CXX_FLAGS=-UPROJ_DATA \
        -DNLOHMANN_JSON_ORIGIN=internal -DEXE_SQLITE3="$(command -v sqlite3)" \
        -DSQLITE3_INCLUDE_DIR="$prefix/include" -DSQLITE3_LIBRARY="$prefix/lib/libsqlite3.a"
}

build_sqlitecpp() {
    cross_build sqlitecpp sqlitecpp-[0-9]* -DSQLITECPP_INTERNAL_SQLITE=OFF -DSQLITECPP_RUN_CPPLINT=OFF \
        -DSQLITECPP_USE_STACK_PROTECTION=OFF -DSQLITE_OMIT_LOAD_EXTENSION=ON -DSQLITE_ENABLE_COLUMN_METADATA=OFF \
        -DSQLite3_INCLUDE_DIR="$prefix/include" -DSQLite3_LIBRARY="$prefix/lib/libsqlite3.a"
}

# Links, one for each library: with -I/usr/include the machine's own C headers would come along.
link_headers() {
    mkdir -p "$prefix/header-only"
    for library in nlohmann CLI fmt utf8 utf8.h xxhash.h tl; do
        ln -s "/usr/include/$library" "$prefix/header-only/$library"
    done
}

build_all() {
    mkdir -p "$prefix/lib" "$prefix/include"
    "$root/scripts/fetch-debian-sources.sh" proj sqlite3 sqlitecpp
    build_sqlite
    build_sqlitecpp
    build_proj
    cross_build googletest /usr/src/googletest
    link_headers
}

mkdir -p "$prefix"
exec 9>"$prefix/lock"
flock 9
if [ -f "$prefix/recipe" ] && recipe | cmp -s - "$prefix/recipe"; then
    say "built already, in $prefix"
    exit 0
fi

find "$prefix" -mindepth 1 -maxdepth 1 ! -name lock -exec rm -rf {} +
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
say "building into $prefix, which takes some minutes"
cd "$work"
# In a condition the shell would go on after a failure within.
set +e
(
    set -e
    build_all
) >"$log" 2>&1 </dev/null
outcome=$?
set -e
if [ "$outcome" -ne 0 ]; then
    tail -n 20 "$log" >&2
    say "failed; the whole of what was said is in $log" >&2
    exit 1
fi
recipe >"$prefix/recipe"
say "done"
