#!/usr/bin/env python3
"""Checks that every include between rooms is one that docs/architecture.md allows.

usage: includes.py REPOSITORY
"""
import pathlib
import re
import sys

# room: the rooms whose public headers it may include beside its own
MAY_USE = {
    "detail": set(),
    "platform": {"detail"},
    "units": {"detail"},
    "presentation": {"units", "platform", "detail"},
    "catalogues": {"platform", "detail"},
    "initial": {"detail"},
    "trace": {"detail"},
    "geo": {"detail"},
}
# Qt modules and other libraries that a public header may not bring to its users.
HEAVY = re.compile(r"#include <(Qt(Gui|Widgets)|QFont|QGui|QImage|iostream|regex|filesystem)")
INCLUDE = re.compile(r'^\s*#\s*include\s+(?:<(rfUtils/[^>]+)>|"([^"]+)")', re.M)


def room_of(path):
    """rfUtils/<room>/x.h -> room; a header directly under rfUtils/ belongs to everyone."""
    parts = pathlib.PurePosixPath(path).parts
    return parts[1] if len(parts) > 2 else None


def complaints_of_room_file(path, text):
    room = room_of(path)
    for match in INCLUDE.finditer(text):
        target = match.group(1)
        if target is None:
            if ".." in match.group(2):
                yield f'includes "{match.group(2)}": a relative path stays in its own room'
            continue
        other = room_of(target)
        if other is None or other == room:
            continue
        if room is None or other not in MAY_USE[room]:
            yield f"may not use the room {other} ({target})"
        if other != "detail" and "/detail/" in target:
            yield f"includes another room's private header {target}"
    public_header = path.endswith(".h") and "/detail/" not in path
    if public_header:
        if HEAVY.search(text):
            yield "is a public header and includes more than its users need"
        if "rfUtils/detail/" in text or f"rfUtils/{room}/detail/" in text:
            yield "is a public header and includes a private one, which is not installed"


def complaints_of_surface_user(text):
    for match in INCLUDE.finditer(text):
        if match.group(1) and "/detail/" in match.group(1):
            yield f"uses more than the installed surface ({match.group(1)})"


def main():
    root = pathlib.Path(sys.argv[1])
    files = 0
    failures = []
    for folder in ("rfUtils", "tools", "examples"):
        for file in sorted((root / folder).rglob("*")):
            if file.suffix not in (".h", ".cpp"):
                continue
            files += 1
            path = file.relative_to(root).as_posix()
            text = file.read_text(encoding="utf-8")
            check = (complaints_of_room_file(path, text) if folder == "rfUtils"
                     else complaints_of_surface_user(text))
            failures += [f"{path}: {complaint}" for complaint in check]
            if folder == "rfUtils" and room_of(path) not in {*MAY_USE, None}:
                failures.append(f"{path}: the room is not in the table")
    print("\n".join(failures) if failures else f"{files} files keep to their rooms")
    return 1 if failures or files == 0 else 0


sys.exit(main())
