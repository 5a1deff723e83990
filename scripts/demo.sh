#!/bin/sh
# Shows orvelcs at work on a drawing in a temporary folder. Usage: demo.sh FOLDER-OF-THE-PROGRAM
set -eu

if [ $# -ne 1 ] || [ ! -x "$1/orvelcs" ]; then
    echo "usage: demo.sh FOLDER-OF-THE-PROGRAM" >&2
    exit 2
fi
PATH="$(cd "$1" && pwd):$PATH"
pictures=$(cd "$(dirname "$0")/.." && pwd)/build/demo
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
demand 0 orvelcs assign @works.wkt --code WORKS:1 plan.qedb
demand 0 orvelcs show plan.qedb

step "The catalog does not know it"
demand 3 orvelcs catalog show WORKS:1

step "Save it for an older reader, and see its three forms: a code, the packed definition, well-known text"
demand 0 orvelcs assign EPSG:25832 plan.qedb
demand 0 orvelcs convert plan.qedb --drawing-version 29 -o older.qedb
demand 0 orvelcs forms older.qedb

step "What is in such packed bytes"
demand 0 orvelcs encode EPSG:25832 --drawing-version 29 -o packed.bin
demand 0 od -A d -t x1z packed.bin
demand 0 orvelcs decode packed.bin

step "The older drawing says the same, and becomes a new one again"
demand 0 orvelcs show older.qedb
demand 0 orvelcs convert older.qedb --drawing-version 33
demand 0 orvelcs forms older.qedb

step "Between two systems there are many transformations, metres apart"
demand 0 sh -c 'orvelcs transformation list EPSG:4230 EPSG:4326 | grep "^EPSG" | head -n 5'

step "How far apart they lie, on a map that stays when the demonstration is over"
demand 0 sh -c 'orvelcs transformation compare EPSG:4230 EPSG:4326 --between EPSG:1133 EPSG:1311 -o ed50.svg | grep "^[0-9]"'
mkdir -p "$pictures"
cp ed50.svg "$pictures/ed50-to-wgs84.svg"
echo "The picture is $pictures/ed50-to-wgs84.svg"

step "Configure one in the drawing, and another one for the user"
mkdir user
export VORLEN_USER_DICTIONARY_PATH="$folder/user"
demand 0 orvelcs config add --source EPSG:4230 --target EPSG:4326 --name 'ED50 to WGS 84 (1)' --type transformation --drawing plan.qedb
demand 0 orvelcs config add --source EPSG:4230 --target EPSG:4326 --name 'ED50 to WGS 84 (18)' --type transformation --user
demand 0 orvelcs config get --drawing plan.qedb
echo

step "The drawing's choice comes first"
demand 0 orvelcs transformation EPSG:4230 EPSG:4326 --drawing plan.qedb
echo '50 7' > points.txt
demand 0 sh -c 'orvelcs transform EPSG:4230 EPSG:4326 --drawing plan.qedb < points.txt | tee drawing.txt'

step "Once the drawing's is cleared, the user's takes over"
demand 0 orvelcs config clear --drawing plan.qedb
demand 0 orvelcs transformation EPSG:4230 EPSG:4326 --drawing plan.qedb
demand 0 sh -c 'orvelcs transform EPSG:4230 EPSG:4326 --drawing plan.qedb < points.txt | tee user.txt'

step "How far apart the two answers are"
paste -d ' ' drawing.txt user.txt | awk '{
    radian = atan2(0, -1) / 180
    north = ($3 - $1) * radian * 6371000
    east = ($4 - $2) * radian * 6371000 * cos($1 * radian)
    printf "%.1f metres\n", sqrt(north * north + east * east)
}'

step "Done"
