#!/usr/bin/env python3
"""Checks that every rule in docs/behaviour.md names a test, and that the test exists.

usage: behaviour.py REPOSITORY
"""
import pathlib
import re
import sys

LINK = re.compile(r"\[(`?)([^\]`]+)`?\]\(\.\./(tests/[^)]+)\)")


def defines(text, name):
    suite, _, case = name.partition(".")
    return re.search(rf"TEST(?:_F|_P)?\(\s*{suite}\s*,\s*{case}\s*\)", text) is not None


def main():
    root = pathlib.Path(sys.argv[1])
    links = 0
    failures = []
    for number, line in enumerate((root / "docs/behaviour.md").read_text("utf-8").splitlines(), 1):
        found = LINK.findall(line)
        if line.startswith("| ") and not line.startswith("| room") and not found:
            failures.append(f"line {number} names no test")
        for quote, name, path in found:
            links += 1
            file = root / path
            if not file.is_file():
                failures.append(f"line {number}: there is no {path}")
            elif quote and not defines(file.read_text("utf-8"), name):
                failures.append(f"line {number}: {path} has no test {name}")
    print("\n".join(failures) if failures else f"{links} tests pin the behaviour")
    return 1 if failures or links == 0 else 0


sys.exit(main())
