#!/usr/bin/env python3
"""Writes a test that runs the examples in the comments of public headers, and compiles the lines of code in documents.

usage: headerExamples.py REPOSITORY SOURCE

An example stands in an indented block of a comment:

    getdBmToUnit("dBuV", 0.0, true) -> "107.0 dBuV"     a call, and what it returns or stores in the variables it names
    -30, -999, -40 -> -35                               an input of the operation that the comment describes
    auto map = std::make_unique<veltaGEO>();            code, which is compiled
    {"power": []}                                       JSON, which is read here

Lines of code in documents are blocks marked as cpp without includes, and indented ones. Numbers are compared to the digits that the example shows. Other blocks, such as files and output, are left alone.
"""
import json
import pathlib
import re
import sys

# header: what a call is made on
OBJECTS = {
    "rfUtils/units/HMath.h": "HMath object;",
    "rfUtils/units/calculateUnit.h": "Scales object;",
    "rfUtils/presentation/rfUtils.h": "rfUtils object; object.fCenter = 100.0;",
    "rfUtils/catalogues/subItemList.h": "subItemList object;",
    "rfUtils/catalogues/ResultSetup.h": "",
    "rfUtils/geo/veltaGEO.h": "const auto map = std::make_unique<veltaGEO>(); veltaGEO& object = *map;",
    "rfUtils/trace/traceRssiBuffer.h": "traceRssiBuffer object(0, 10);",
}
VARIABLES = {"result": "double", "decimalDegrees": "double", "sign": "short", "degrees": "double", "minutes": "double",
             "seconds": "double", "latitude": "float", "longitude": "float"}
DOCUMENTS = ("README.md", "docs/formats.md")
FRAGMENT = re.compile(r"^ *```cpp\n((?: *(?!#)\S.*\n)+?) *```$|^((?:    \w.*;\n)+)$", re.M)
ENTRY = re.compile(r"(\S.*?)\s*->\s*(.+?)(?=\s{4,}\S.*->|$)")
TEXT = re.compile(r'"[^"]*"')
NUMBER = re.compile(r"[+-]?\d[\d.]*|NaN")
HEAD = """\
// Written by headerExamples.py from the comments of the public headers.
{includes}
#include <gtest/gtest.h>

#include <QFile>
#include <QTextCodec>
#include <cmath>
#include <memory>
#include <sstream>

// Lines of code show a result that they do not use.
#pragma GCC diagnostic ignored "-Wunused-variable"

namespace {{

// Both ways of calculateUnit.h by one name.
struct Scales : calculateUnit {{
    template <typename... Arguments>
    bool actOtherScale2dBm(Arguments&&... arguments) {{
        return ::actOtherScale2dBm(arguments...);
    }}
}};

[[maybe_unused]] void show(const QString& /*message*/) {{}}

std::string text(const QString& value) {{ return value.toStdString(); }}
std::string text(const std::string& value) {{ return value; }}

std::string tokens(const stPaser& record) {{
    std::string all;
    for (int i = 0; i < record.count; ++i) {{
        all += (i > 0 ? " \\"" : "\\"") + std::string(record.token[i]) + '"';
    }}
    return all.empty() ? "none" : all;
}}

}}  // namespace
"""


def comment_blocks(text):
    """Each indented block of a comment: its first line's number, its lines, and the operation that the comment describes."""
    lines = text.splitlines()
    number = 0
    while number < len(lines):
        comment = []
        while number < len(lines) and (match := re.match(r" *///(?: (.*))?$", lines[number])):
            comment.append((number + 1, match[1] or ""))
            number += 1
        declared = re.match(r"[^(]*?(\w+)\(", " ".join(lines[number:number + 3])) if comment else None
        block, blank = [], True
        for at, line in comment + [(0, "")]:
            if line.startswith("    ") and (blank or block):
                block.append((at, line[4:]))
            elif block:
                yield block[0][0], [line for _, line in block], declared[1] if declared else None
                block = []
            blank = not line
        number += 1


def quoted(value):
    return json.dumps(value, ensure_ascii=False)


def number_check(value, expected):
    if expected == "NaN":
        return f"EXPECT_TRUE(std::isnan({value}));"
    digits = len(expected.partition(".")[2])
    return f"EXPECT_NEAR({value}, {float(expected)!r}, {f'0.5e-{digits}' if digits else '1e-6'});"


def input_check(operation, given, expected):
    """An example that shows an input only."""
    if operation == "makeToken":
        return [f"auto record = std::make_unique<stPaser>(); object.makeToken(record.get(), {quoted(given)});",
                f"EXPECT_EQ(tokens(*record), {quoted(expected)});"]
    values = given.replace("NaN", "NAN")
    return [f"double result = 0.0; for (const double value : std::initializer_list<double>{{{values}}}) "
            "object.appendMarkerPower(0, value);",
            f"EXPECT_TRUE(object.{operation}(0, &result));", number_check("result", expected)]


def call_check(call, expected):
    if expected.startswith("{"):
        return [f"object.{call};", "std::unordered_map<std::string, subItem> all;",
                f"const subItem wanted{expected};", "ASSERT_TRUE(object.getSubItemsById(wanted.itemId, all));",
                "const subItem& got = all.begin()->second;",
                "EXPECT_EQ(std::tie(got.itemId, got.id, got.label, got.enumValue, got.dispSeq), std::tie(wanted.itemId, "
                "wanted.id, wanted.label, wanted.enumValue, wanted.dispSeq));"]
    stored = [name for name in re.findall(r"[a-zA-Z]\w*", TEXT.sub("", call)) if name in VARIABLES]
    if stored:
        values = ["7.5"] if expected == "as before" else NUMBER.findall(expected)[:len(stored)]
        return [f"{VARIABLES[name]} {name} = {'7.5' if name == 'result' else '0'};" for name in stored] + \
            [f"object.{call};"] + [number_check(*pair) for pair in zip(stored, values, strict=True)]
    if text := TEXT.match(expected):
        checks = ['object.setUnit(QStringLiteral("before"));'] if "`unit`" in expected else []
        checks.append(f"EXPECT_EQ(text(object.{call}), {text[0]});")
        if unit := re.search(r'`unit` (?:("[^"]*")|as before)', expected):
            checks.append(f'EXPECT_EQ(text(object.unit()), {unit[1] or quoted("before")});')
        return checks
    return [number_check(f"object.{call}", NUMBER.match(expected)[0])]


def checks_of(lines, operation):
    """The statements that a block's examples become; those of one example each."""
    joined = "\n".join(lines)
    if any("->" in line for line in lines) and "->load" not in joined:
        for line in lines:
            for given, expected in ENTRY.findall(line):
                is_call = re.match(r"\w+\(.*\)$", given)
                yield call_check(given, expected) if is_call else input_check(operation, given, expected)
    elif joined.startswith("{"):
        json.loads(joined)
        yield ["// JSON"]
    elif joined.endswith((";", "}")):
        yield [joined]


def test_of(header, text):
    name = pathlib.PurePosixPath(header).stem
    body = []
    for number, lines, operation in comment_blocks(text):
        for checks in checks_of(lines, operation):
            made = [OBJECTS[header]] if any("object." in check for check in checks) else []
            body += ["    {", f'        SCOPED_TRACE("{header}:{number}");', *(f"        {line}" for line in made + checks), "    }"]
    assert body, f"{header} has no example any more"
    return "\n".join([f"TEST(HeaderExamples, {name}) {{", *body, "}", ""])


def test_of_document(document, text):
    """The lines of code, compiled but not run."""
    fragments = [match[1] or match[2] for match in FRAGMENT.finditer(text)]
    assert fragments, f"{document} has no lines of code any more"
    name = re.sub(r"\W", "_", document)
    return "".join(f"""\
[[maybe_unused]] void {name}{i}([[maybe_unused]] veltaGEO* map, [[maybe_unused]] const QString& file) {{
{fragment}}}
""" for i, fragment in enumerate(fragments))


def main():
    root, source = map(pathlib.Path, sys.argv[1:])
    headers = [file.relative_to(root).as_posix() for file in sorted(root.glob("rfUtils/*/*.h"))]
    texts = {header: (root / header).read_text(encoding="utf-8") for header in headers}
    unknown = [header for header in headers if header not in OBJECTS
               and any(list(checks_of(lines, name)) for _, lines, name in comment_blocks(texts[header]))]
    assert not unknown, f"examples that nothing runs: {unknown}"
    includes = "".join(f"#include <{header}>\n" for header in OBJECTS)
    tests = "\n".join(test_of(header, texts[header]) for header in OBJECTS)
    tests += "\n".join(test_of_document(name, (root / name).read_text(encoding="utf-8")) for name in DOCUMENTS)
    source.write_text(HEAD.format(includes=includes) + "\n" + tests, encoding="utf-8")
    print(f"{tests.count('SCOPED_TRACE')} examples")


main()
