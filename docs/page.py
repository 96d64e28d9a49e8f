#!/usr/bin/env python3
"""Turns a document of the repository into a page of the reference: Doxygen reads it through this filter.

usage: page.py DOCUMENT

The documents are written for GitHub's reading. Doxygen differs from it in six things:
- headings have no names to link to: they get those of GitHub, behind the name of the document
- links lead to pages, to installed examples (beside the folder of the pages), or to nothing that is installed
- formulas stand between $`...`$ and in blocks marked as math
- the project's name is also that of a class, to which Doxygen would link it
- a backslash is one, within `code` too
- <!-- @... --> holds a line for the reference alone, such as the diagram of the rooms
"""
import collections
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FENCE = re.compile(r"^\s*```(\w*)")
HEADING = re.compile(r"^(#+) +(.*?) *$")
LINK = re.compile(r"(!?)\[((?:`[^`]*`|[^\]`])*)\]\(([^)\s]+)\)")
BACKSLASHED = re.compile(r"(?<!`)`([^`]*\\[^`]*)`(?!`)")
PROJECT = re.compile(r"(?<![\w/`:(.%])rfUtils(?!\w|[/`(]|::|\.\w)")
FORMULA = re.compile(r"\$`(.*?)`\$")
ONLY_HERE = re.compile(r"^<!-- (@.*) -->$")


def page(path):
    """The name of a document's page, from its path below the repository."""
    return path.removesuffix(".md").replace("/", "_").lower()


def anchor(heading):
    """The name that GitHub gives a heading."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def link(match, document):
    picture, text, target = match.groups()
    if picture:
        return f"![{text}]({pathlib.PurePosixPath(target).name})"
    if "://" in target:
        return match[0]
    file, _, section = target.partition("#")
    path = (document.parent / file if file else document).resolve().relative_to(ROOT).as_posix()
    if path.endswith((".md", ".h")):
        text = text.strip("`")
    if path.endswith(".md"):
        return f"[{text}](@ref {page(path)}{'_' + section if section else ''})"
    if path.startswith("rfUtils/"):
        return f"[{text}](@ref {path})"
    if path.startswith("examples"):
        return f'<a href="../{path}">{text}</a>'
    return text


def in_code(match):
    """Code with a backslash, in which Doxygen would see a command."""
    text = match[1].replace("&", "&amp;").replace("<", "&lt;").replace("\\", "&#92;")
    return f"<code>{text}</code>"


def rendered(document):
    path = document.resolve()
    name = page(path.relative_to(ROOT).as_posix())
    inside = None  # the language of the block that a line stands in
    repeated = collections.Counter()  # how often a heading stood before; GitHub numbers its further ones
    for line in path.read_text(encoding="utf-8").splitlines():
        if match := FENCE.match(line):
            math = "math" in (match[1], inside)
            opens = inside is None
            inside = match[1] if opens else None
            yield ("@f[" if opens else "@f]") if math else line
        elif inside is not None:
            yield line
        elif match := HEADING.match(line):
            is_page = match[1] == "#"
            title = match[2].replace("`", "") if is_page else match[2]
            own = name if is_page else f"{name}_{anchor(title)}"
            number = f"-{repeated[own]}" if repeated[own] else ""
            repeated[own] += 1
            yield f"{match[1]} {title} {{#{own}{number}}}"
        elif match := ONLY_HERE.match(line):
            yield match[1]
        else:
            if "`" not in line:
                line = line.replace("\\", "\\\\")
            line = FORMULA.sub(lambda formula: f"@f${formula[1]}@f$", line)
            line = BACKSLASHED.sub(in_code, line)
            line = PROJECT.sub("%rfUtils", line)
            yield LINK.sub(lambda found: link(found, path), line)


sys.stdout.reconfigure(encoding="utf-8")
print("\n".join(rendered(pathlib.Path(sys.argv[1]))))
