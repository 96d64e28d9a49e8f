#!/usr/bin/env bash
# install.sh BUILD PREFIX LIBDIR: installs into another folder and moves it to PREFIX, so that the tests
# that follow also prove that nothing holds the path it was installed to.
. "$(dirname "$0")/common.sh"
build=$1 prefix=$2 libdir=$3

rm -rf "$prefix" "$prefix.first"
cmake --install "$build" --prefix "$prefix.first" >/dev/null
mv "$prefix.first" "$prefix"

test "$(readlink "$prefix/$libdir/librfUtils.so")" = librfUtils.so.1
test "$(readlink "$prefix/$libdir/librfUtils.so.1")" = librfUtils.so.1.0.0
readelf -d "$prefix/$libdir/librfUtils.so" | grep -q 'SONAME.*\[librfUtils.so.1\]'
test ! -e "$prefix/include/rfUtils/detail"
if grep -rIl "$prefix.first" "$prefix"; then
    echo "an installed text holds the path of its installation" >&2
    exit 1
fi
if [ -x "$prefix/bin/rfutils" ]; then
    test "$(env -u LD_LIBRARY_PATH "$prefix/bin/rfutils" --version)" = "rfutils 1.0.0"
fi
