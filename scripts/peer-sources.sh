#!/bin/sh
# Fetches pugixml's sources for `make bench-peers`, once, and prints the folder that they lie in. Debian's package has the
# narrow edition only, and the configuration is wide text.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
folder=${XDG_CACHE_HOME:-$HOME/.cache}/orvel-coordsys-core/peers
mkdir -p "$folder"
exec 9>"$folder/lock"
flock 9
if [ ! -d "$folder/pugixml" ]; then
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    (cd "$work" && "$root/scripts/fetch-debian-sources.sh" pugixml) >"$folder/fetch.log" 2>&1 || {
        tail -n 5 "$folder/fetch.log" >&2
        echo "peer-sources: failed; the whole of what was said is in $folder/fetch.log" >&2
        exit 1
    }
    mv "$work"/pugixml-[0-9]*/ "$folder/pugixml"
fi
echo "$folder/pugixml/src"
