#!/usr/bin/env bash
# translations.sh LUPDATE VIEWER: every text of the viewer is translated, and nothing else.
set -euo pipefail

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for translation in "$2"/translations/*.ts; do
    cp "$translation" "$work/now.ts"
    "$1" -silent -no-obsolete -locations none -source-language en "$2/qml" -ts "$work/now.ts"
    if grep -B 2 'type="unfinished"' "$work/now.ts"; then
        echo "viewer.translations: $translation lacks these" >&2
        exit 1
    fi
    diff <(grep -c '<source>' "$translation") <(grep -c '<source>' "$work/now.ts")
done
