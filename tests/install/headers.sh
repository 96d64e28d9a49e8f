#!/usr/bin/env bash
# headers.sh PREFIX WORK COMPILER...: every installed header compiles alone, free of warnings, with Qt's
# Core headers only, and all of them behind Qt's own keywords (slots, signals, emit, foreach), which an
# application's earlier includes bring along. Other libraries' headers count as system headers.
. "$(dirname "$0")/common.sh"
prefix=$1 work=$2
shift 2

mkdir -p "$work"
flags=$(pkg-config --cflags Qt5Core | sed 's/-I/-isystem /g')

expect_clean() { # source, what it is
    local compiler
    for compiler in "${compilers[@]}"; do
        # shellcheck disable=SC2086  # the flags are words
        "$compiler" -std=c++17 -fPIC -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
            -I "$prefix/include" $flags "$1" || { echo "failed: $compiler $2" >&2; exit 1; }
    done
}

compilers=("$@")
count=0
echo '#include <QObject>' >"$work/behindQt.cpp"
while IFS= read -r header; do
    echo "#include <$header>" >"$work/alone.cpp"
    cat "$work/alone.cpp" >>"$work/behindQt.cpp"
    expect_clean "$work/alone.cpp" "$header"
    count=$((count + 1))
done < <(cd "$prefix/include" && find rfUtils -name '*.h' | sort)
expect_clean "$work/behindQt.cpp" "all headers behind Qt's"

# A flag that changes the layout of a class is refused while compiling.
if "${compilers[0]}" -std=c++17 -fPIC -fsyntax-only -DBOOST_CB_ENABLE_DEBUG=1 -I "$prefix/include" $flags \
    "$work/behindQt.cpp" 2>"$work/refusal.txt"; then
    echo "BOOST_CB_ENABLE_DEBUG was accepted" >&2
    exit 1
fi
grep -q '#error.*BOOST_CB_ENABLE_DEBUG' "$work/refusal.txt"
echo "$count headers"
test "$count" -ge 13
