#!/usr/bin/env bash
# What the Python package loses does not grow with its calls: valgrind finds no error in it, and counts as many bytes
# definitely lost after thirty rounds as after ten. The interpreter itself loses some.
#
# usage: leaks.sh PYTHON BUILD
set -euo pipefail
build=$(realpath "$2")
cd "$(dirname "$0")"
export PYTHONPATH=$build/python PYTHONMALLOC=malloc PYTHONDONTWRITEBYTECODE=1 LC_ALL=C.UTF-8
export RFUTILS_SAMPLES=$PWD/../../examples/data OPENBLAS_NUM_THREADS=1

lost() { # times
    local log
    log=$(mktemp)
    valgrind --leak-check=full --errors-for-leak-kinds=none --show-leak-kinds=none --log-file="$log" \
        "$python" -W ignore leaks.py "$1" >&2
    if grep -A 20 -E 'Invalid (read|write|free)|depends on uninitialised' "$log" | grep -E '_core\.|librfUtils'; then
        echo "leaks: valgrind finds errors in the package" >&2
        exit 1
    fi
    sed -n 's/.*definitely lost: \(.*\) in .* blocks/\1/p' "$log"
    rm "$log"
}

python=$1
few=$(lost 10)
many=$(lost 30)
echo "definitely lost: $few after 10 rounds, $many after 30"
test "$few" = "$many"
