#!/usr/bin/env bash
# pkgConfig.sh PREFIX LIBDIR SOURCE WORK CXX: the example built with one compiler call, through pkg-config.
. "$(dirname "$0")/common.sh"
prefix=$1 libdir=$2 source=$3 work=$4 cxx=$5

rm -rf "$work"
mkdir -p "$work"
export PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
test "$(pkg-config --modversion rfUtils)" = 1.0.0
# pkg-config escapes the blanks in a folder's name for a shell that reads its output as a command line.
eval '"$cxx" -std=c++17 "$source/examples/minimal/main.cpp"' "$(pkg-config --cflags --libs rfUtils)" '-o "$work/levels"'
export LD_LIBRARY_PATH=$prefix/$libdir
expect_output "$work/levels" minimal
