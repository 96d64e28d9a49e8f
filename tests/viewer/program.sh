#!/usr/bin/env bash
# program.sh VIEWER SAMPLES: the viewer as a program: its options, and pictures of recordings from a file, standard input
# and another program. It says nothing on standard error but why it fails.
set -euo pipefail

viewer=$1
samples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_RUNTIME_DIR=$work/runtime
mkdir -m 700 "$XDG_RUNTIME_DIR"

fail() {
    echo "viewer.program: $*" >&2
    exit 1
}

# Without display, and with the version and the usage.
(
    unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
    "$viewer" --help >"$work/help.txt"
    "$viewer" --version | grep -qE '^rfutils-view [0-9]+\.[0-9]+\.[0-9]+$'
)
grep -qF 'FILE | - | -- PROGRAM' "$work/help.txt"

refused() { # message, arguments
    local status=0
    "$viewer" "${@:2}" 2>"$work/refusal.txt" || status=$?
    [ "$status" -eq 2 ] || fail "${*:2}: status $status"
    grep -qF -- "$1" "$work/refusal.txt" || fail "${*:2}: $(cat "$work/refusal.txt")"
}
refused "Unknown option 'wide'" --wide
refused '--limit: "high" is not a number' --limit high
refused 'give one recording' a.csv b.csv
refused 'give one recording' a.csv -- rtl_power
refused 'There is no unit parsec, only dBm, ' "$samples/fm_band.csv" --unit parsec

# Width and height of a PNG file.
size_of() {
    od -An -tu1 -j16 -N8 "$1" | awk '{print $1 * 16777216 + $2 * 65536 + $3 * 256 + $4 "x" $5 * 16777216 + $6 * 65536 + $7 * 256 + $8}'
}
picture() { # name, arguments
    "$viewer" --screenshot "$work/$1.png" --width 1024 --height 600 "${@:2}" 2>"$work/errors.txt" || fail "$1: status $?"
    [ ! -s "$work/errors.txt" ] || fail "$1: $(cat "$work/errors.txt")"
    [ "$(size_of "$work/$1.png")" = 1024x600 ] || fail "$1: $(size_of "$work/$1.png")"
}
picture file "$samples/fm_band.csv" --marker 98.3 --limit -60 --unit dBuV
picture input - <"$samples/fm_band.csv"
picture recorder -- cat "$samples/fm_band.csv"
picture map --map "$samples/terrain.asc" --light
picture empty

# The picture lacks what was asked for, or cannot be written.
failed() { # message, arguments
    local status=0
    "$viewer" --screenshot "$work/failed.png" --width 1024 --height 600 "${@:2}" 2>"$work/errors.txt" || status=$?
    [ "$status" -eq 1 ] || fail "${*:2}: status $status"
    grep -qx -- "rfutils-view: $1" "$work/errors.txt" || fail "${*:2}: $(cat "$work/errors.txt")"
}
failed '.*missing\.csv.*' "$work/missing.csv"
failed '.*missing\.asc.*' "$samples/fm_band.csv" --map "$work/missing.asc"
failed '.*missing\.csv.*' "$samples/fm_band.csv" --mask "$work/missing.csv"
failed '.*missing\.json.*' "$samples/fm_band.csv" --catalogue "$work/missing.json"
failed 'Cannot write .*/missing/picture\.png' "$samples/fm_band.csv" --screenshot "$work/missing/picture.png"

LC_ALL=de_DE.UTF-8 picture german
if cmp -s "$work/empty.png" "$work/german.png"; then
    echo "viewer.program: without German texts"  # lrelease was missing
fi
