#!/usr/bin/env bash
# findPackage.sh PREFIX SOURCE WORK CXX: the example as a project of its own, through find_package.
. "$(dirname "$0")/common.sh"
prefix=$1 source=$2 work=$3 cxx=$4

rm -rf "$work"
cmake -S "$source/examples/minimal" -B "$work" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$cxx"
cmake --build "$work"
expect_output "$work/levels" minimal

# A program on the instrument's platform does not get a library with a platform of its own.
if cmake -S "$source/examples/minimal" -B "$work/platform" -DCMAKE_PREFIX_PATH="$prefix" \
    -DRFUTILS_PLATFORM_TARGET=Instrument::platform >/dev/null 2>"$work/refusal.txt"; then
    echo "an embedded platform was accepted beside another" >&2
    exit 1
fi
grep -q 'built with RFUTILS_PLATFORM_TARGET=' "$work/refusal.txt"

# A program written for the next major version does not get this one.
mkdir -p "$work/next"
sed 's/rfUtils 1.0/rfUtils 2.0/' "$source/examples/minimal/CMakeLists.txt" >"$work/next/CMakeLists.txt"
cp "$source/examples/minimal/main.cpp" "$work/next"
if cmake -S "$work/next" -B "$work/next/build" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null 2>&1; then
    echo "version 2.0 was found" >&2
    exit 1
fi
