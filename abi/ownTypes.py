#!/usr/bin/env python3
"""Reduces abidw's description of the library to what our own headers declare.

Types of Qt and the standard library keep their names but lose members and sizes, which depend on the machine. Types
that no exported function or class of ours uses are removed, as are positions in files.

usage: abidw LIBRARY | ownTypes.py
"""
import re
import sys
import xml.etree.ElementTree as ET

OWN_HEADER = re.compile(r"(^|/)rfUtils/[A-Za-z/]+\.h$")
CLASSES = {"class-decl", "union-decl"}
PLACES = {"filepath", "line", "column"}


def is_own(element):
    return OWN_HEADER.search(element.get("filepath", "")) is not None


def make_foreign_classes_opaque(element):
    """Keeps types nested in them, such as an enumeration that is a parameter of ours."""
    for child in element:
        make_foreign_classes_opaque(child)
    if element.tag in CLASSES and not is_own(element):
        element[:] = [child for child in element if child.tag == "member-type"]
        element.attrib.pop("size-in-bits", None)
        element.attrib.pop("def-of-decl-id", None)
        element.set("is-declaration-only", "yes")


def references(element):
    """The ids of the types that an element and its children use."""
    if element.tag in CLASSES and not is_own(element):
        return
    for name in ("type-id", "naming-typedef-id"):
        if element.get(name):
            yield element.get(name)
    for child in element:
        yield from references(child)


def reached_types(root):
    described = {e.get("id"): e for e in root.iter() if e.get("id")}
    waiting = [e for e in root.iter() if e.tag in CLASSES and is_own(e) and e.find(".//*[@elf-symbol-id]") is not None]
    waiting += [e for e in root.iter() if e.get("elf-symbol-id")]
    reached = {e.get("id") for e in waiting if e.get("id")}
    while waiting:
        for type_id in references(waiting.pop()):
            if type_id not in reached:
                reached.add(type_id)
                waiting.append(described[type_id])
    return reached


def drop_unreached(element, reached):
    """Returns whether anything of the element is left."""
    if element.tag in CLASSES and is_own(element) and element.get("id") in reached:
        return True
    kept = [child for child in element if drop_unreached(child, reached)]
    container = element.tag in {"abi-instr", "namespace-decl", "member-type"} | CLASSES
    if container:
        element[:] = kept
    return bool(container and kept) or element.get("id") in reached or element.get("elf-symbol-id") is not None


def main():
    root = ET.parse(sys.stdin).getroot()
    make_foreign_classes_opaque(root)
    reached = reached_types(root)
    for unit in root.findall("abi-instr"):
        if not drop_unreached(unit, reached):
            root.remove(unit)
    for element in root.iter():
        for place in PLACES & set(element.keys()):
            del element.attrib[place]
    ET.indent(root)
    print(ET.tostring(root, encoding="unicode"))


main()
