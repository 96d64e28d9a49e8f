#!/usr/bin/env bash
# symbols.sh LIBRARY: only the documented classes and functions are exported.
. "$(dirname "$0")/common.sh"

classes='HMath|calculateUnit|rfUtils|subItemList|ResultSetup|itemInitial|traceRssiBuffer|veltaGEO'
classes="$classes|ServerItem|VemoJsonDocument"
allowed="^(non-virtual thunk to )?($classes)::|^(vtable|typeinfo|typeinfo name) for ($classes)\$|^actOtherScale2dBm\\("

symbols=$(nm -DC --defined-only "$1" | cut -d' ' -f3-)
if surplus=$(printf '%s\n' "$symbols" | grep -Ev "$allowed"); then
    printf 'exported beside the documented surface:\n%s\n' "$surplus" >&2
    exit 1
fi
# The check must have seen the library's own classes.
for class in ${classes//|/ }; do
    printf '%s\n' "$symbols" | grep -q "^$class::" || { echo "$class is not exported" >&2; exit 1; }
done
