#!/bin/sh
# Runs fuzzers on the project's seeds. Usage: fuzz.sh FOLDER-OF-THE-PROGRAMS [TARGET...]; without a target it runs all.
# Each runs for FUZZ_SECONDS (60) or FUZZ_RUNS executions, FUZZ_JOBS (2) at a time. New inputs stay beside the programs,
# and the next run continues from them.
set -eu

if [ $# -lt 1 ] || [ ! -d "$1" ]; then
    echo "usage: fuzz.sh FOLDER-OF-THE-PROGRAMS [TARGET...]" >&2
    exit 2
fi
programs=$(cd "$1" && pwd)
shift
cd "$(dirname "$0")/.."
results=$(dirname "$programs")/fuzzing
# A small quarantine for freed memory makes the fuzzers several times as fast.
: "${ASAN_OPTIONS:=quarantine_size_mb=1:thread_local_quarantine_size_kb=64:malloc_context_size=2}"
export ASAN_OPTIONS

# The maximum length of a target's input. Longer inputs are slower and reach no more code.
longest_input() {
    case $1 in
    unpack | pack) echo 300 ;;
    definition_xrecord | operations) echo 64 ;;
    serialized_block) echo 2500 ;;
    drawing_rows | drawing_check) echo 200 ;;
    *) echo 600 ;;
    esac
}

figure_of() {
    sed -n "s/^stat::$2: *//p" "$results/$1.log"
}

fuzz() {
    mkdir -p "$results/$1"
    set -- "$1" "$results/$1" "fuzz/corpus/$1"
    [ ! -d "fuzz/findings/$1" ] || set -- "$@" "fuzz/findings/$1"
    target=$1
    shift
    if "$programs/fuzz_$target" -max_total_time="${FUZZ_SECONDS:-60}" -runs="${FUZZ_RUNS:--1}" -timeout=20 \
        -max_len="$(longest_input "$target")" -dict="fuzz/dictionaries/$target.dict" -print_final_stats=1 \
        -artifact_prefix="$results/$target-" "$@" >"$results/$target.log" 2>&1; then
        echo "$target: $(figure_of "$target" number_of_executed_units) executions," \
            "$(figure_of "$target" average_exec_per_sec) a second, $(figure_of "$target" peak_rss_mb) MB, no finding"
        return
    fi
    echo "$target: a finding; all about it is in $results/$target.log" >&2
    grep -m 3 -E '^Broken promise|ERROR: |runtime error: ' "$results/$target.log" >&2 || true
    sed -n 's/.*Test unit written to /the input: /p' "$results/$target.log" | sort -u >&2
    return 1
}

# How this script calls itself for one target.
if [ "${1-}" = --one ]; then
    fuzz "$2"
    exit
fi

[ $# -gt 0 ] || set -- $(ls fuzz/corpus)
mkdir -p "$results"
# Some targets write a file each time, which is faster in memory than on a disk.
folder=$(mktemp -d "$([ -w /dev/shm ] && echo /dev/shm || echo /tmp)/orvel-fuzz-XXXXXX")
trap 'rm -rf "$folder"' EXIT
trap 'exit 1' HUP INT TERM
export TMPDIR="$folder"
printf '%s\n' "$@" | xargs -P "${FUZZ_JOBS:-2}" -I TARGET "$PWD/scripts/fuzz.sh" "$programs" --one TARGET
