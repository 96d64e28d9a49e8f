#!/usr/bin/env bash
# headers.sh PREFIX WORK COMPILER...: every installed header compiles alone, free of warnings, with Qt's
# Core headers only. Other libraries' headers count as system headers.
. "$(dirname "$0")/common.sh"
prefix=$1 work=$2
shift 2

mkdir -p "$work"
flags=$(pkg-config --cflags Qt5Core | sed 's/-I/-isystem /g')
count=0
while IFS= read -r header; do
    for compiler in "$@"; do
        printf '#include <%s>\n' "$header" >"$work/alone.cpp"
        # shellcheck disable=SC2086  # the flags are words
        "$compiler" -std=c++17 -fPIC -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
            -I "$prefix/include" $flags "$work/alone.cpp" || { echo "failed: $compiler $header" >&2; exit 1; }
    done
    count=$((count + 1))
done < <(cd "$prefix/include" && find rfUtils -name '*.h' | sort)
echo "$count headers"
test "$count" -ge 13
