#!/usr/bin/env bash
# Runs the first two examples of docs/fleet.md on parts of a sample and compares what they end with to one run.
#
# usage: fleet.sh RFUTILS PAGE SAMPLES
set -euo pipefail
command=$1
page=$2
samples=$3

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/bin" "$folder/work"
printf '#!/bin/sh\nexec "%s" "$@"\n' "$command" >"$folder/bin/rfutils"
chmod +x "$folder/bin/rfutils"
export PATH=$folder/bin:$PATH
export HOME=$folder PARALLEL_HOME=$folder
cd "$folder/work"

# Eight hops a sweep, ten sweeps a file, named by when they begin.
split -l 80 -d -a 3 --additional-suffix=.csv "$samples/fm_band.csv" fm_
"$command" peaks "$samples/fm_band.csv" --format csv >"$folder/whole.csv"

awk '/^```sh$/ { inside = ++blocks <= 2; next } /^```/ { inside = 0 } inside' "$page" >"$folder/examples.sh"
[ "$(wc -l <"$folder/examples.sh")" -ge 3 ] || { echo "fleet: the page has no examples" >&2; exit 1; }
bash -euo pipefail "$folder/examples.sh"

# All but average (4), floor (5) and above (6) is the same.
if ! diff <(cut -d, -f1-3,7- "$folder/whole.csv") <(cut -d, -f1-3,7- peaks.csv); then
    echo "fleet: the merged signals are not those of one run" >&2
    exit 1
fi
