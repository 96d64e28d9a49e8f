#!/usr/bin/env python3
"""Checks that the blocks of documents hold what they quote; with UPDATE=1 in the environment, writes it there.

usage: quotes.py REPOSITORY DOCUMENT...

<!-- examples/minimal/main.cpp --> before a block names the file that it quotes.
"""
import os
import pathlib
import re
import sys

QUOTE = re.compile(r"^(<!-- (\S+/\S+?)(?: as \S+)? -->\n```\w*\n)(.*?)(^```$)", re.M | re.S)


def main():
    root = pathlib.Path(sys.argv[1])
    quotes = 0
    failures = []
    for document in sys.argv[2:]:
        text = (root / document).read_text(encoding="utf-8")
        for match in QUOTE.finditer(text):
            quotes += 1
            if (root / match[2]).read_text(encoding="utf-8") != match[3]:
                failures.append(f"{document}: the block is not {match[2]}")
        if os.environ.get("UPDATE") == "1":
            text = QUOTE.sub(
                lambda match: match[1] + (root / match[2]).read_text(encoding="utf-8") + match[4], text)
            (root / document).write_text(text, encoding="utf-8")
    print("\n".join(failures) if failures else f"{quotes} blocks are what they quote")
    return 1 if failures or quotes == 0 else 0


sys.exit(main())
