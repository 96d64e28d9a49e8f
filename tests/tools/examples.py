#!/usr/bin/env python3
"""Runs the examples of documents in a copy of the sample files, and compares what each shows with what it prints.

usage: examples.py COMMAND SAMPLES DOCUMENT...

An example is a line "$ rfutils ..." of a block marked as console, and what it prints the lines behind it: standard
output, then standard error. "..." stands for lines left out. A line "$ cat FILE" makes the file of the lines behind it,
unless it is a sample.
"""
import difflib
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```console\n(.*?)^```$", re.M | re.S)
EXAMPLE = re.compile(r"^\$ rfutils (.*)\n((?:(?!\$ ).*\n)*)", re.M)
FILE = re.compile(r"^\$ cat (\S+)\n((?:(?!\$ ).*\n)*)", re.M)
GAP = "...\n"


def run(command, line, folder):
    words = shlex.split(line)
    given = ""
    if "<" in words:
        at = words.index("<")
        given = (folder / words[at + 1]).read_text(encoding="utf-8")
        del words[at:]
    done = subprocess.run([command, *words], cwd=folder, input=given, capture_output=True, encoding="utf-8", check=False)
    return done.stdout + done.stderr


def matches(printed, shown):
    if GAP not in shown:
        return printed == shown
    start, end = shown.split(GAP, 1)
    return len(printed) >= len(start) + len(end) and printed.startswith(start) and printed.endswith(end)


def main():
    command, samples, *documents = sys.argv[1:]
    failures = 0
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch) / "samples"
        shutil.copytree(samples, folder)
        for document in documents:
            text = pathlib.Path(document).read_text(encoding="utf-8")
            blocks = "".join(BLOCK.findall(text))
            for name, lines in FILE.findall(blocks):
                if not (folder / name).exists():
                    (folder / name).write_text(lines, encoding="utf-8")
            examples = EXAMPLE.findall(blocks)
            if not examples:
                print(f"{document}: has no example")
                failures += 1
            for line, shown in examples:
                printed = run(os.path.abspath(command), line, folder)
                if not matches(printed, shown):
                    difference = difflib.unified_diff(shown.splitlines(), printed.splitlines(), document, line, lineterm="")
                    print("\n".join(difference))
                    failures += 1
            print(f"{document}: {len(examples)} examples")
    return failures > 0


sys.exit(main())
