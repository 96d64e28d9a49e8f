#!/usr/bin/env bash
# standin.sh SOURCE WORK CXX FLAGS QT: builds the library against the stand-in platform, all its sources together, and
# uses it.
set -euo pipefail
here=$(dirname "$0") source=$1 work=$2 cxx=$3 flags=$4 qt=$5

rm -rf "$work"
cmake -S "$here" -B "$work" -G Ninja -DRFUTILS_SOURCE="$source" -DRFUTILS_QT="$qt" -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0
cmake --build "$work" --target standin_tests --parallel 2
"$work/standin_tests"

# None of the embedded classes is left in the library.
if nm -DC --defined-only "$work/rfUtils/rfUtils/"librfUtils*.so |
    grep -E '(ServerItem|VemoJsonDocument)::'; then
    echo "the library still defines an embedded platform class" >&2
    exit 1
fi
