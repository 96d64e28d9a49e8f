#!/usr/bin/env python3
"""Writes the QML pages of documents to a folder, with the text that each shows and the sample files.

usage: documents.py FOLDER SAMPLES DOCUMENT...

A page is a block marked as qml; the block marked as text behind it is what it shows.
"""
import pathlib
import re
import shutil
import sys

PAGE = re.compile(r"^```qml\n(.*?)^```\n\s*(?:^```text\n(.*?)^```\n)?", re.M | re.S)


def main():
    folder, samples, *documents = map(pathlib.Path, sys.argv[1:])
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(samples, folder)
    pages = 0
    for document in documents:
        text = document.read_text(encoding="utf-8")
        for number, match in enumerate(PAGE.finditer(text), 1):
            name = folder / f"{document.stem}{number}"
            name.with_suffix(".qml").write_text(match[1], encoding="utf-8")
            name.with_suffix(".txt").write_text(match[2] or "", encoding="utf-8")
            pages += 1
        if text.count("```qml") != number:
            return f"{document}: a page is not understood"
    print(f"{pages} pages")
    return 0


sys.exit(main())
