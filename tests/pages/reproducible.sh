#!/usr/bin/env bash
# reproducible.sh PROGRAM SOURCES FOLDER: makes the pages twice, in other places, and compares them.
set -euo pipefail

program=$1 sources=$2 folder=$3
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"
SOURCE_DATE_EPOCH=1000000000 TZ=Pacific/Auckland LC_ALL=de_DE.UTF-8 "$program" one "$sources" 1.2.3 2020-02-02
SOURCE_DATE_EPOCH=1000000000 TZ=America/Lima LC_ALL=C "$program" two "$sources" 1.2.3 2021-01-01
diff -r one two
grep -q '^\.TH "RFUTILS" 1 "2001-09-09" "rfutils 1\.2\.3"' one/tools/man/man1/rfutils.1
env -u SOURCE_DATE_EPOCH "$program" three "$sources" 1.2.3 2020-02-02
grep -q '^\.TH "RFUTILS" 1 "2020-02-02"' three/tools/man/man1/rfutils.1

# Without a part of a document there are no pages.
mkdir -p broken/docs broken/examples/minimal
cp "$sources/README.md" broken
cp "$sources/examples/minimal/main.cpp" broken/examples/minimal
cp "$sources"/docs/*.md broken/docs
sed -i '/^## What all commands share/d' broken/docs/command.md
if "$program" four broken 1.2.3 2020-02-02 2>refusal.txt; then
    echo "pages were made of a document without the part that they show" >&2
    exit 1
fi
grep -q 'no heading What all commands share' refusal.txt
