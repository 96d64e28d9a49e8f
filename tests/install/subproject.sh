#!/usr/bin/env bash
# subproject.sh KIND SOURCE WORK CXX: the library built as a part of another project; KIND names the folder.
. "$(dirname "$0")/common.sh"
kind=$1 source=$2 work=$3 cxx=$4

rm -rf "$work"
cmake -S "$(dirname "$0")/$kind" -B "$work" -G Ninja -DRFUTILS_SOURCE="$source" -DCMAKE_CXX_COMPILER="$cxx"
cmake --build "$work"
expect_output "$work/levels" minimal

# The enclosing project's installation holds the shared library that its program runs with, nothing else of ours.
cmake --install "$work" --prefix "$work/prefix" >/dev/null
expect_output "$work/prefix/bin/levels" minimal
test "$(find "$work/prefix" ! -type d ! -name 'librfUtils.so.*' ! -name levels | wc -l)" -eq 0
