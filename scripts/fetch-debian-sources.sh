#!/bin/sh
# Unpacks the sources of Debian packages into the current folder, by the machine's own package lists, asked for sources
# instead. Changes nothing else on the machine and needs no privileges.
#
#     fetch-debian-sources.sh PACKAGE…
set -eu

mkdir -p apt/parts apt/lists/partial apt/cache/archives/partial
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    if [ -f "$list" ]; then
        sed -n 's/^deb /deb-src /p' "$list" >"apt/parts/$(basename "$list" .list).list"
    fi
done
for list in /etc/apt/sources.list.d/*.sources; do
    if [ -f "$list" ]; then
        sed 's/^Types:.*/Types: deb-src/' "$list" >"apt/parts/$(basename "$list")"
    fi
done

apt_get() {
    apt-get -qq -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$PWD/apt/parts" \
        -o Dir::State::lists="$PWD/apt/lists" -o Dir::Cache="$PWD/apt/cache" \
        -o APT::Sandbox::User="$(id -un)" "$@"
}

apt_get update
apt_get source "$@"
