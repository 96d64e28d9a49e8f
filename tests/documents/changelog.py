#!/usr/bin/env python3
"""Checks that CHANGELOG.md begins with unreleased changes, and then with the version of the project.

usage: changelog.py CHANGELOG VERSION
"""
import pathlib
import re
import sys

text = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")
headings = re.findall(r"^## \[([^\]]+)\](.*)$", text, re.M)
expected = [("Unreleased", ""), (sys.argv[2], None)]
for (name, rest), (wanted, end) in zip(headings, expected):
    if name != wanted or not (rest == end if end is not None else re.fullmatch(r" - \d{4}-\d\d-\d\d", rest)):
        sys.exit(f"the changelog has [{name}]{rest} where [{wanted}] belongs")
if len(headings) < len(expected):
    sys.exit("the changelog has no released version")
print("the changelog begins with the version of the project")
