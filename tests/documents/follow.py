#!/usr/bin/env python3
"""Follows a document in an empty folder, as its reader does.

usage: follow.py DOCUMENT FOLDER [--built LAUNCHER DIRECTORY PROGRAM]

Writes each block that a comment names (<!-- FOLDER/FILE as NAME -->), runs the blocks marked as sh, whose commands have to
succeed, and compares what the commands of the blocks marked as console print with what stands there, without blanks at the
ends of lines. A picture under a
comment that names a file is compared with that file.

With --built the blocks marked as sh are left out: after "<!-- .../step1.cpp as main.cpp -->" PROGRAM is the program
step1 of DIRECTORY, started by LAUNCHER (an emulator, or empty).
"""
import pathlib
import re
import shlex
import shutil
import struct
import subprocess
import sys
import zlib

NAMED = re.compile(r"<!-- (?P<file>\S+?)(?: as (?P<name>\S+))? -->")
PICTURE = re.compile(r"!\[[^\]]*\]\((?P<picture>\S+)\)")
TOLERANCE = 8  # of a colour: processors may round the smoothing differently


def blocks(text):
    """Each block with the comment before it, its language and its lines; pictures as the language picture."""
    named = None
    language = None
    for line in text.splitlines():
        if line.startswith("```"):
            if language is None:
                language, body = line[3:] or "text", []
            else:
                yield named, language, body
                named = language = None
        elif language is not None:
            body.append(line)
        elif match := NAMED.fullmatch(line):
            named = match
        elif named and (match := PICTURE.match(line)):
            yield named, "picture", [match["picture"]]
            named = None


def pixels(path):
    """Width and height of an 8-bit RGB picture, and its bytes without PNG's filters."""
    data = path.read_bytes()
    at, packed = 8, b""
    while at < len(data):
        length, kind = struct.unpack_from(">I4s", data, at)
        chunk = data[at + 8:at + 8 + length]
        if kind == b"IHDR":
            width, height, depth, colour = struct.unpack_from(">IIBB", chunk)
            assert (depth, colour) == (8, 2), f"{path} is not an RGB picture"
        packed += chunk if kind == b"IDAT" else b""
        at += 12 + length
    raw, row, rows = zlib.decompress(packed), bytes(3 * width), []
    for start in range(0, len(raw), 3 * width + 1):
        above, row = row, bytearray(raw[start + 1:start + 1 + 3 * width])
        for i in range(len(row)):
            a, b, c = row[i - 3] if i > 2 else 0, above[i], above[i - 3] if i > 2 else 0
            near = min((a, b, c), key=lambda value: abs(a + b - c - value))  # Paeth
            row[i] = (row[i] + (0, a, b, (a + b) // 2, near)[raw[start]]) & 255
        rows.append(bytes(row))
    return width, height, b"".join(rows)


def compare_pictures(shown, made):
    *shown_size, shown_bytes = pixels(shown)
    *made_size, made_bytes = pixels(made)
    assert shown_size == made_size, f"{made} has another size than {shown}"
    worst = max(abs(a - b) for a, b in zip(shown_bytes, made_bytes))
    assert worst <= TOLERANCE, f"{made} differs from {shown} by {worst}"


def run_console(lines, folder):
    commands = []
    for line in lines:
        if line.startswith("$ "):
            commands.append((line[2:], []))
        else:
            commands[-1][1].append(line)
    for command, expected in commands:
        done = subprocess.run(command, shell=True, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        shown = [line.rstrip() for line in done.stdout.decode("utf-8").splitlines()]
        assert shown == expected, f"{command} prints\n" + "\n".join(shown) + "\ninstead of\n" + "\n".join(expected)
    return len(commands)


def install(program, launcher, directory, source):
    """Puts a program that is built already where the document builds it."""
    program.parent.mkdir(exist_ok=True)
    built = shlex.quote(str(directory / pathlib.Path(source).stem))
    program.write_text(f'#!/bin/sh\nexec {launcher} {built} "$@"\n', encoding="utf-8")
    program.chmod(0o755)


def main():
    document, folder = map(pathlib.Path, sys.argv[1:3])
    built = sys.argv[4:] if "--built" in sys.argv else None
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    runs = 0
    for named, language, lines in blocks(document.read_text(encoding="utf-8")):
        if language == "picture":
            compare_pictures(document.parent / lines[0], folder / named["file"])
        elif named:
            name = named["name"] or pathlib.Path(named["file"]).name
            (folder / name).write_text("\n".join(lines) + "\n", encoding="utf-8")
            if built and named["name"]:
                install(folder / built[2], built[0], pathlib.Path(built[1]), named["file"])
        elif language == "sh" and not built:
            subprocess.run("set -e\n" + "\n".join(lines), shell=True, cwd=folder, check=True)
        elif language == "console":
            runs += run_console(lines, folder)
    print(f"{runs} commands print what {document.name} shows")
    return 0 if runs else 1


sys.exit(main())
