#!/bin/sh
# Runs test programs under valgrind, one after another. Usage: valgrind.sh FOLDER-OF-THE-PROGRAMS [PROGRAM...]; without a
# program it runs all except `project`, which reads the sources, `cli` and `porting`, which start other programs, and
# `saves`, which replaces calls of the system and kills its children. The output of a program stays beside it.
set -eu

if [ $# -lt 1 ] || [ ! -d "$1" ]; then
    echo "usage: valgrind.sh FOLDER-OF-THE-PROGRAMS [PROGRAM...]" >&2
    exit 2
fi
programs=$(cd "$1" && pwd)
shift
cd "$(dirname "$0")/.."
results=$programs/../valgrind
mkdir -p "$results"

[ $# -gt 0 ] || set -- $(cd "$programs" && ls | sed -n 's/_tests$//p' | grep -vxE 'project|cli|saves')

# Valgrind keeps memory for each library that was ever loaded, which these tests would count as the project's.
GTEST_FILTER='-RepeatedLoading.*DoesNotGrow'
export GTEST_FILTER

# Some tests define allocation functions, which valgrind must not replace.
# A child of a test is a copy that ends in the middle of it and would report its memory as leaked.
run() {
    valgrind --quiet --soname-synonyms=somalloc=nouserintercepts --child-silent-after-fork=yes --suppressions=scripts/valgrind.supp --num-callers=24 \
        --leak-check=full --show-leak-kinds=definite,possible --errors-for-leak-kinds=definite,possible \
        --log-file="$results/$1.log" "$programs/${1}_tests" --gtest_brief=1 >"$results/$1.out" 2>&1
}

failed=
for name in "$@"; do
    begin=$(date +%s)
    if run "$name" && [ ! -s "$results/$name.log" ]; then
        echo "$name: $(sed -n 's/^.* \([0-9]* tests\) from.*/\1/p' "$results/$name.out"), no error," \
            "$(($(date +%s) - begin)) s"
        continue
    fi
    failed="$failed $name"
    echo "$name: see $results/$name.log and $results/$name.out" >&2
    head -n 40 "$results/$name.log" >&2
    grep -A 6 'FAILED' "$results/$name.out" | head -n 40 >&2 || true
done
[ -z "$failed" ] || { echo "failed:$failed" >&2; exit 1; }
