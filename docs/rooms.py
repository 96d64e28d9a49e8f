#!/usr/bin/env python3
"""Draws the rooms of the code, with an arrow from each to those whose headers it includes, as a graph of Graphviz.

usage: rooms.py REPOSITORY FILE

The includes are those that tests/architecture/includes.py checks. An arrow that other arrows imply is left out, and so is
rfUtils/detail, which every room may use. Example programs are not drawn.
"""
import importlib.util
import pathlib
import sys

FLOORS = {"rfUtils": "librfUtils.so", "analysis": "analysis (static library)", "qml": "QML module RfUtils",
          "python": "Python package rfutils", "tools": "programs"}
SHARED = "rfUtils/detail"


def includes_module(root):
    spec = importlib.util.spec_from_file_location("includes", root / "tests/architecture/includes.py")
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def floor_of(room):
    return room.split("/")[0]


def uses_of(root):
    """Each room with the rooms that its files include headers of."""
    includes = includes_module(root)
    uses = {room: set() for room in includes.MAY_USE if floor_of(room) in FLOORS and room != SHARED}
    for file in includes.sources(root):
        path = file.relative_to(root).as_posix()
        room = includes.room_of(path)
        if room in uses:
            targets = includes.INCLUDE.findall(file.read_text(encoding="utf-8"))
            uses[room] |= {includes.room_of(target) for target in targets} & uses.keys() - {room}
    return uses


def implied(uses, room, target):
    """Whether a room reaches a target by way of another room that it uses."""
    found, waiting = set(), list(uses[room] - {target})
    while waiting:
        other = waiting.pop()
        if other not in found:
            found.add(other)
            waiting += uses[other]
    return target in found


def graph(uses):
    yield "digraph rooms {"
    yield '    graph [size="9,9", rankdir=TB, fontname=Helvetica, fontsize=13, nodesep=0.15, ranksep=0.45]'
    yield '    node [shape=box, style="filled,rounded", fillcolor=white, color=gray40]'
    yield "    node [fontname=Helvetica, fontsize=12, height=0.3, margin=0.08, width=0]"
    yield "    edge [color=gray40, arrowsize=0.6]"
    for floor, title in FLOORS.items():
        rooms = sorted(room for room in uses if floor_of(room) == floor)
        yield f'    subgraph "cluster_{floor}" {{'
        yield f'        graph [label="{title}", labeljust=l, style="filled,rounded", fillcolor=gray95, color=gray80]'
        yield from (f'        "{room}" [label="{room.split("/")[-1]}"]' for room in rooms)
        yield "    }"
    for room in sorted(uses):
        yield from (f'    "{room}" -> "{target}"' for target in sorted(uses[room]) if not implied(uses, room, target))
    yield "}"


pathlib.Path(sys.argv[2]).write_text("\n".join(graph(uses_of(pathlib.Path(sys.argv[1])))) + "\n", encoding="utf-8")
