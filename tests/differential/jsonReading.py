#!/usr/bin/env python3
"""Reads catalogues and setups with Python's own JSON parser, for a comparison with the library.

usage: jsonReading.py FILE      of "c" (catalogue) or "s" (setups) and the length of a document on a line each, and its
                                bytes behind that

Prints for each document what stands in it:
  W                 everything in it is a choice or a setup, or names its list; else w
  C FIRST LAST ...  a choice or setup on these lines: list, label, id (hexadecimal), enum, dispSeq
  X FIRST LAST      something else that stands where a choice or setup is expected
"""

import json
import sys

MEMBERS = {"c": {"label": str, "id": str, "enum": int, "dispSeq": int}, "s": {"label": str, "id": str}}


class Pairs(list):
    """The members of an object, repeated ones included."""


def refuse(constant):
    raise ValueError(constant)


DECODER = json.JSONDecoder(object_pairs_hook=Pairs, parse_constant=refuse)


def integer(value):
    """The whole number of 32 bits that a value is, else nothing."""
    if isinstance(value, bool) or not isinstance(value, (int, float)) or value != value:
        return None
    if isinstance(value, float) and not value.is_integer():
        return None
    return int(value) if -(2**31) <= value < 2**31 else None


def text(kind, value):
    """A catalogue holds UTF-8, setups hold UTF-16."""
    encoding = "utf-8" if kind == "c" else "utf-16-be"
    return "=" + value.encode(encoding, "surrogatepass").hex()


def entry(kind, key, value):
    """What a choice or setup says, if that is all that it says."""
    members = MEMBERS[kind]
    if not isinstance(value, Pairs) or sorted(name for name, _ in value) != sorted(members):
        return None
    found = dict(value)
    fields = [text(kind, key)] if kind == "c" else []
    for name, wanted in members.items():
        if wanted is str:
            if not isinstance(found[name], str):
                return None
            fields.append(text(kind, found[name]))
        else:
            number = integer(found[name])
            if number is None:
                return None
            fields.append(str(number))
    return " ".join(fields)


class Walk:
    """The elements of the lists at the top of a well-formed document, with their places."""

    def __init__(self, document):
        self.document = document
        self.at = 0
        self.lists = []  # key, value, elements with their places

    def blanks(self):
        while self.document[self.at] in " \t\n\r":
            self.at += 1

    def value(self):
        value, self.at = DECODER.raw_decode(self.document, self.at)
        return value

    def parts(self, end):
        """Stops at each part of a list or object, over which the caller steps."""
        self.at += 1
        self.blanks()
        while self.document[self.at] != end:
            yield self.at
            self.blanks()
            if self.document[self.at] == ",":
                self.at += 1
                self.blanks()
        self.at += 1

    def run(self):
        self.blanks()
        for _ in self.parts("}"):
            key = self.value()
            self.blanks()
            self.at += 1
            self.blanks()
            if self.document[self.at] == "[":
                elements = [(place, self.value(), self.at) for place in self.parts("]")]
                self.lists.append((key, None, elements))
            else:
                self.lists.append((key, self.value(), None))


def read(kind, raw):
    try:
        document = raw.decode("utf-8")
        document = document[1:] if document.startswith("\ufeff") else document
        content = DECODER.decode(document)
    except (ValueError, RecursionError):
        return ["w"]
    if not isinstance(content, Pairs):
        return ["w"]
    walk = Walk(document)
    walk.run()
    keys = [key for key, _, _ in walk.lists]
    whole = len(set(keys)) == len(keys)
    lines = []
    for key, value, elements in walk.lists:
        if elements is None:
            whole = whole and key == "$schema" and isinstance(value, str)
            continue
        whole = whole and (kind == "s" or len(elements) > 0)
        for begin, element, end in elements:
            first = document.count("\n", 0, begin) + 1
            place = f"{first} {first + document.count(chr(10), begin, end)}"
            said = entry(kind, key, element)
            whole = whole and said is not None
            lines.append(f"X {place}" if said is None else f"C {place} {said}")
    return ["W" if whole else "w", *lines]


def main():
    with open(sys.argv[1], "rb") as documents:
        while True:
            kind = documents.readline().decode().strip()
            if not kind:
                return
            raw = documents.read(int(documents.readline()))
            print("\n".join(read(kind, raw)))


main()
