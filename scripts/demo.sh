#!/bin/sh
# Shows orvelcs at work on a drawing in a temporary folder. Usage: demo.sh FOLDER-OF-THE-PROGRAM
set -eu

if [ $# -ne 1 ] || [ ! -x "$1/orvelcs" ]; then
    echo "usage: demo.sh FOLDER-OF-THE-PROGRAM" >&2
    exit 2
fi
PATH="$(cd "$1" && pwd):$PATH"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
trap 'exit 1' HUP INT TERM
cd "$folder"
echo "The drawings of this demonstration are in $folder"

# step TEXT: what comes next.
step() {
    printf '\n# %s\n' "$1"
}

# demand STATUS COMMAND...: prints the command, runs it and insists on its exit status.
demand() {
    expected=$1
    shift
    printf '$'
    for word in "$@"; do
        case $word in
        *[!A-Za-z0-9_./:=-]*) printf " '%s'" "$word" ;;
        *) printf ' %s' "$word" ;;
        esac
    done
    printf '\n'
    status=0
    "$@" 2>&1 || status=$?
    if [ "$status" -ne "$expected" ]; then
        echo "demo: exit status $status where $expected was expected" >&2
        exit 1
    fi
}

step "An empty drawing"
demand 0 orvelcs new plan.qedb

step "Look for a coordinate reference system"
demand 0 orvelcs catalog search ETRS89 / UTM zone 32N --limit 4

step "Assign it"
demand 0 orvelcs assign EPSG:25832 plan.qedb
demand 0 orvelcs show plan.qedb

step "How the drawing stores it"
demand 0 orvelcs forms plan.qedb

step "Assign another, and see every notice that a reactor receives"
demand 0 orvelcs assign --events EPSG:31467 plan.qedb

step "A reactor vetoes the next one: it is refused and the drawing keeps what it has"
demand 1 orvelcs assign --events --veto named EPSG:4326 plan.qedb
demand 0 orvelcs show plan.qedb

step "Clear it"
demand 0 orvelcs clear --events plan.qedb
demand 3 orvelcs show plan.qedb

step "A system of one's own, from a text"
cat > works.wkt <<'WKT'
PROJCS["Works grid",
  GEOGCS["ETRS89",
    DATUM["European_Terrestrial_Reference_System_1989",
      SPHEROID["GRS 1980",6378137,298.257222101]],
    PRIMEM["Greenwich",0],
    UNIT["degree",0.0174532925199433]],
  PROJECTION["Transverse_Mercator"],
  PARAMETER["latitude_of_origin",52],
  PARAMETER["central_meridian",13.4],
  PARAMETER["scale_factor",1],
  PARAMETER["false_easting",10000],
  PARAMETER["false_northing",10000],
  UNIT["metre",1]]
WKT
demand 0 cat works.wkt
demand 0 orvelcs assign --definition works.wkt --code WORKS:1 plan.qedb
demand 0 orvelcs show plan.qedb

step "The catalog does not know it"
demand 3 orvelcs catalog show WORKS:1

step "Done"
