#!/usr/bin/env python3
"""Checks that each rule of rfutils check has an entry in one document, as --explain shows it, and a link in another.

usage: rules.py COMMAND ENTRIES LINKS
"""
import json
import pathlib
import re
import subprocess
import sys

ENTRY = re.compile(r"^### (.*?)\n(.*?)(?=^##|\Z)", re.M | re.S)


def words(text):
    """Whatever the lines, and the fences around examples."""
    return re.sub(r"^```.*$", "", text, flags=re.M).split()


def main():
    command, entries, links = sys.argv[1:]

    def run(*arguments):
        return subprocess.run([command, "check", *arguments], capture_output=True, encoding="utf-8", check=True).stdout

    explained = dict(ENTRY.findall(pathlib.Path(entries).read_text(encoding="utf-8")))
    linking = pathlib.Path(links).read_text(encoding="utf-8")
    rules = [rule["rule"] for rule in json.loads(run("--rules", "--format", "json"))]
    failures = [f"{entries}: {rule} is no rule" for rule in explained if rule not in rules]
    for rule in rules:
        if words(f"{rule} {explained.get(rule, '')}") != words(run("--explain", rule)):
            failures.append(f"{entries}: the entry {rule} is not what --explain shows")
        if f"(check.md#{rule})" not in linking:
            failures.append(f"{links}: no link to {rule}")
    print("\n".join(failures) if failures else f"{len(rules)} rules")
    return 1 if failures or not rules else 0


sys.exit(main())
