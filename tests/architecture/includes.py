#!/usr/bin/env python3
"""Checks that every include is one that docs/architecture.md allows.

usage: includes.py REPOSITORY
"""
import pathlib
import re
import sys

LIBRARY = {f"rfUtils/{room}" for room in
           ("units", "presentation", "catalogues", "initial", "trace", "geo", "platform")}
EVERY_ROOM = LIBRARY | {"rfUtils/detail"}
# folder: the folders whose headers it may include beside its own; private ones only in its own room,
# in rfUtils/detail and where named here
MAY_USE = {
    "rfUtils/detail": set(),
    "rfUtils/platform": {"rfUtils/detail"},
    "rfUtils/units": {"rfUtils/detail"},
    "rfUtils/presentation": {"rfUtils/units", "rfUtils/platform", "rfUtils/detail"},
    "rfUtils/catalogues": {"rfUtils/platform", "rfUtils/detail"},
    "rfUtils/initial": {"rfUtils/detail"},
    "rfUtils/trace": {"rfUtils/detail"},
    "rfUtils/geo": {"rfUtils/detail"},
    "analysis/support": EVERY_ROOM,
    "analysis/units": EVERY_ROOM | {"analysis/support"},
    "analysis/catalogues": EVERY_ROOM | {"analysis/support"},
    "analysis/recordings": EVERY_ROOM | {"analysis/support"},
    "analysis/statistics": EVERY_ROOM | {"analysis/support", "analysis/recordings"},
    "analysis/maps": EVERY_ROOM | {"analysis/support", "analysis/plots", "rfUtils/geo/detail"},
    "analysis/plots": EVERY_ROOM | {"analysis/support", "analysis/units", "analysis/recordings",
                                    "analysis/statistics"},
    "analysis/checks": EVERY_ROOM | {"analysis/support", "analysis/maps", "analysis/catalogues",
                                     "analysis/recordings"},
    "analysis/studies": EVERY_ROOM | {"analysis/support", "analysis/units", "analysis/recordings",
                                      "analysis/statistics"},
    "tools/rfutils": LIBRARY | {"analysis/support", "analysis/recordings", "analysis/statistics",
                                "analysis/maps", "analysis/plots", "analysis/units",
                                "analysis/catalogues", "analysis/checks", "analysis/studies"},
    "python/support": EVERY_ROOM | {"analysis/support"},
    "python/units": EVERY_ROOM | {"analysis/support", "analysis/units", "analysis/recordings",
                                  "python/support"},
    "python/recordings": EVERY_ROOM | {"analysis/support", "analysis/units", "analysis/recordings",
                                       "analysis/statistics", "analysis/studies", "analysis/plots",
                                       "python/support", "python/units"},
    "python/maps": EVERY_ROOM | {"analysis/support", "analysis/maps", "analysis/recordings",
                                 "python/support"},
    "python/catalogues": EVERY_ROOM | {"analysis/support", "analysis/catalogues", "python/support"},
    "python/checks": EVERY_ROOM | {"analysis/support", "analysis/checks", "python/support"},
    "python/rfutils": {"python/support", "python/units", "python/recordings", "python/maps",
                       "python/catalogues", "python/checks"},
    "tools/pages": {"tools/rfutils", "tools/rfutils-view", "analysis/units"},
    "qml/support": EVERY_ROOM | {"analysis/support"},
    "qml/texts": EVERY_ROOM | {"analysis/support", "analysis/units", "qml/support"},
    "qml/lists": EVERY_ROOM | {"analysis/support", "analysis/catalogues", "qml/support"},
    "qml/maps": EVERY_ROOM | {"analysis/support", "analysis/maps", "qml/support"},
    "qml/traces": EVERY_ROOM | {"analysis/support", "analysis/recordings", "analysis/statistics",
                                "qml/support"},
    "qml/views": EVERY_ROOM | {"analysis/support", "analysis/units", "analysis/recordings",
                               "analysis/statistics", "analysis/plots", "qml/support", "qml/traces"},
    "qml/RfUtils": {"qml/texts", "qml/lists", "qml/maps", "qml/traces", "qml/views"},
    "tools/rfutils-view": {"rfUtils/detail"},
    "examples": LIBRARY,
}
# Libraries that a public header must not bring to its users.
HEAVY = re.compile(r"#include <(Qt(Gui|Widgets)|QFont|QGui|QImage|iostream|regex|filesystem)")
# Neither the middle floor nor the QML module nor the Python package prints, reads options or ends the process.
OUTPUT = re.compile(r"#include <(iostream|cstdio|QCommandLine)|\b(std::exit|std::abort|qDebug)\(")
# The one header that asks for the version of Qt.
QT_HEADER = "rfUtils/detail/qtVersion.h"
QT_VERSION = re.compile(r"^\s*#\s*(?:el)?if.*\bQT_VERSION", re.M)
INCLUDE = re.compile(r'^\s*#\s*include\s+[<"]((?:rfUtils|analysis|qml|python)/[^>"]+|[^>"]*\.\./[^>"]+)', re.M)


def room_of(path):
    """The folder of the table that a file or an include belongs to; None for headers of everyone."""
    parts = pathlib.PurePosixPath(path).parts
    if parts[0] == "examples":
        return "examples"
    return "/".join(parts[:2]) if len(parts) > 2 else None


def complaints(path, text):
    room = room_of(path)
    if room not in {*MAY_USE, None}:
        yield "the room is not in the table"
        return
    if path != QT_HEADER and QT_VERSION.search(text):
        yield f"asks for the version of Qt, which only {QT_HEADER} does"
    for target in INCLUDE.findall(text):
        other = room_of(target)
        if ".." in target:
            yield f'includes "{target}": a relative path stays in its own room'
        elif other not in (None, room) and (room is None or other not in MAY_USE[room]):
            yield f"may not use the room {other} ({target})"
        elif ("/detail/" in target and other not in (room, "rfUtils/detail")
              and f"{other}/detail" not in MAY_USE[room]):
            yield f"includes another room's private header {target}"
    if path.startswith("rfUtils/") and path.endswith(".h") and "/detail/" not in path:
        if HEAVY.search(text):
            yield "is a public header and includes more than its users need"
        if "/detail/" in "".join(INCLUDE.findall(text)):
            yield "is a public header and includes a private one, which is not installed"
    if path.startswith(("analysis/", "qml/", "python/")) and OUTPUT.search(text):
        yield "prints, reads options or ends the process, which is left to programs"


def sources(root):
    """The files that the table is about."""
    return [file for folder in ("rfUtils", "analysis", "qml", "python", "tools", "examples")
            for file in sorted((root / folder).rglob("*")) if file.suffix in (".h", ".cpp")]


def main():
    root = pathlib.Path(sys.argv[1])
    files = sources(root)
    failures = []
    for file in files:
        path = file.relative_to(root).as_posix()
        failures += [f"{path}: {complaint}"
                     for complaint in complaints(path, file.read_text(encoding="utf-8"))]
    print("\n".join(failures) if failures else f"{len(files)} files keep to their rooms")
    return 1 if failures or not files else 0


if __name__ == "__main__":
    sys.exit(main())
