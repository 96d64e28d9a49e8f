#!/usr/bin/env python3
"""Writes the QML pages of documents to a folder, with the text that each shows and the sample files.

usage: documents.py FOLDER SAMPLES DOCUMENT_OR_HEADER...

A page of a document is a block marked as qml; the block marked as text behind it is what it shows. In the comments of
headers the types in an indented block are a page with an empty text, in FOLDER/headers, as it may use what it does not show;
calls with their results are a page that shows the results.
"""
import pathlib
import re
import shutil
import sys

PAGE = re.compile(r"^```qml\n(.*?)^```\n\s*(?:^```text\n(.*?)^```\n)?", re.M | re.S)
BLOCK = re.compile(r"^ *///\n((?: *///     .*\n)+)", re.M)
CALL = re.compile(r'(\w+\([^)]*\)) -> "([^"]*)"')
IMPORTS = "import QtQuick 2.15\nimport QtQuick.Controls 2.15\nimport RfUtils 1.0\n\n"


def pages_of_document(text):
    for match in PAGE.finditer(text):
        yield match[1], match[2] or ""


def blocks_of_header(text):
    """The indented blocks of its comments."""
    for match in BLOCK.finditer(text):
        yield re.sub(r"^ *///     ", "    ", match[1], flags=re.M)


def page_of_calls(singleton, calls):
    texts = ", ".join(f"{singleton}.{call}" for call, _ in calls)
    return f'{IMPORTS}Text {{ text: [{texts}].join("\\n") }}\n', "\n".join(result for _, result in calls) + "\n"


def write_page(name, page, text):
    name.with_suffix(".qml").write_text(page, encoding="utf-8")
    name.with_suffix(".txt").write_text(text, encoding="utf-8")


def main():
    folder, samples, *documents = map(pathlib.Path, sys.argv[1:])
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(samples, folder)
    (folder / "headers").mkdir()
    pages = 0
    for document in documents:
        text = document.read_text(encoding="utf-8")
        if document.suffix == ".h":
            blocks = list(blocks_of_header(text))
            types = [block for block in blocks if re.match(r" +[A-Z]\w+ {", block)]
            calls = [call for block in blocks for call in CALL.findall(block)]
            for number, block in enumerate(types, 1):
                write_page(folder / f"headers/{document.stem}{number}", f"{IMPORTS}Item {{\n{block}}}\n", "")
            if calls:
                write_page(folder / f"{document.stem}Calls", *page_of_calls(document.stem, calls))
            if not types:
                return f"{document}: there is no example"
            pages += len(types) + bool(calls)
            continue
        for number, page in enumerate(pages_of_document(text), 1):
            write_page(folder / f"{document.stem}{number}", *page)
            pages += 1
        if text.count("```qml") != number:
            return f"{document}: a page is not understood"
    print(f"{pages} pages")
    return 0


sys.exit(main())
