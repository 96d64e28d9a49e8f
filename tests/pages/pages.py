#!/usr/bin/env python3
"""Holds manual pages and completions against the help of the programs.

usage: pages.py manual|bash|zsh|fish SHARE FOLDER PROGRAM [VIEWER]

SHARE has a folder for each component, FOLDER is where the test works.
"""
import csv
import io
import os
import pathlib
import re
import shutil
import subprocess
import sys

import shells

failures = []


def expect(what, found, expected):
    if found != expected:
        failures.append(f"{what}:\n  found    {found}\n  expected {expected}")


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def options_of(help_text):
    """Long names and short ones, as {"--output": "-o"}."""
    return {name: short for short, name in
            re.findall(r"^  (?:(-\w), )?(--[a-z][a-z-]*)", help_text, re.MULTILINE)}


def command_names(program):
    return re.findall(r"^  ([a-z]+) {2,}", output(program, "--help"), re.MULTILINE)


# Manual pages

def page_text(page):
    run = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", page], capture_output=True, check=True,
                         encoding="utf-8", env={**os.environ, "MANWIDTH": "80", "LC_ALL": "C.UTF-8", "MAN_KEEP_FORMATTING": ""})
    expect(f"{page.name}: warnings", run.stderr, "")
    return re.sub(".\b", "", run.stdout)


def check_sources(page, pages):
    source = page.read_text("ascii")
    if shutil.which("mandoc"):
        lint = subprocess.run(["mandoc", "-T", "lint", page], capture_output=True, text=True, check=False)
        expect(f"{page.name}: mandoc -T lint", lint.stdout, "")
    title = re.search(r'^\.TH "?([^" ]+)"? (\d) "(\d{4}-\d\d-\d\d)" "rfutils [0-9.]+"', source, re.MULTILINE)
    expect(f"{page.name}: title", title and title[1].replace("\\-", "-").lower() + "." + title[2], page.name.lower())
    for name, section in re.findall(r"\\fB([A-Za-z\\-]+)\\fR\((\d)\)", source):
        reference = name.replace("\\-", "-") + "." + section
        if reference not in pages and not (reference == "rfutils-view.1" and len(sys.argv) < 6):
            failures.append(f"{page.name}: refers to {reference}, which is no page")


def listed_options(text):
    return options_of(re.sub(r"^ {4,8}(?=-)", "  ", section(text, "OPTIONS"), flags=re.MULTILINE))


def section(text, title):
    found = re.search(rf"^{title}\n(.*?)(?=^\S|\Z)", text, re.MULTILINE | re.DOTALL)
    return found[1] if found else ""


def manual(share, program, viewer):
    pages = {page.name: page for page in share.rglob("man/man*/*")}
    for page in pages.values():
        check_sources(page, pages)
    texts = {name: page_text(page) for name, page in pages.items()}
    commands = command_names(program)
    expect("pages of subcommands", sorted(name for name in pages if name.startswith("rfutils-")),
           sorted([f"rfutils-{name}.1" for name in commands] + ["rfutils-formats.5", "rfutils-view.1"]))
    expect("commands in rfutils(1)", re.findall(r"^ +rfutils-(\w+)\(1\)$", section(texts["rfutils.1"], "COMMANDS"),
                                                re.MULTILINE), commands)
    for name in commands:
        help_text = output(program, name, "--help")
        expect(f"options in rfutils-{name}(1)", listed_options(texts[f"rfutils-{name}.1"]), options_of(help_text))
        page_words = texts[f"rfutils-{name}.1"].replace("\u2010\n", "").split()
        for example in re.findall(r"^  (rfutils .*)$", help_text.replace(" \\\n     ", ""), re.MULTILINE):
            words = [word for word in example.split() if word != "\\"]
            expect(f"rfutils-{name}(1): the words of {example}", [word for word in words if word not in page_words], [])
    if viewer:
        expect("options in rfutils-view(1)", listed_options(texts["rfutils-view.1"]),
               options_of(output(viewer, "--help")))
    for name, headings in {"rfutils.1": ["VALUES", "OUTPUT", "PICTURES", "ERRORS", "EXIT STATUS"],
                           "rfutils-formats.5": ["COLOUR TABLE (.CLR)", "RESULT SETUPS (JSON)"],
                           "librfUtils.3": ["HEADERS", "CONVENTIONS", "EXAMPLE"],
                           "rfutils-view.1": ["MARKERS", "SETTINGS", "KEYS"]}.items():
        for heading in ["NAME", "SEE ALSO"] + headings:
            if not section(texts[name], re.escape(heading)).strip():
                failures.append(f"{name}: nothing stands below {heading}")


# Completions

CATALOGUE = """{"atten": [{"label": "Auto", "id": "auto", "enum": 0, "dispSeq": 1}],
"two words": [{"label": "A", "id": "a", "enum": 0, "dispSeq": 1}, {"label": "B", "id": "b", "enum": 1, "dispSeq": 2}],
"comma, \\"quotes\\"": [{"label": "A", "id": "a", "enum": 0, "dispSeq": 1}]}"""
FILES = ["sweeps.csv", "packed.csv.gz", "map.asc", "map.bil", "map.tab", "choices.json", "picture.png", "plot.svg",
         "notes.txt"]


def units(program):
    rows = csv.DictReader(io.StringIO(output(program, "units", "--format", "csv")))
    return {row["unit"] for row in rows if row["fromDbm"] == "name"}


def cases(program):
    """Lines, and all that is offered behind them."""
    recordings = {"sweeps.csv", "packed.csv.gz", "folder"}
    rasters = {"map.asc", "map.bil", "folder"}
    yield "rfutils ", set(command_names(program)) | {"help"}
    yield "rfutils help wid", {"width"}
    yield "rfutils convert --to ", units(program)
    yield "rfutils convert -30 --to dBuV", {unit for unit in units(program) if unit.startswith("dBuV")}
    yield "rfutils trace sweeps.csv --unit V", {unit for unit in units(program) if unit.startswith("V")}
    yield "rfutils trace ", recordings
    yield "rfutils trace sweeps.csv --marker 88.1MHz ", recordings
    yield "rfutils compare sweeps.csv p", {"packed.csv.gz"}
    yield "rfutils raster ", rasters
    yield "rfutils profile m", {"map.asc", "map.bil"}
    yield "rfutils tab ", {"map.tab", "folder"}
    yield "rfutils catalogue ", {"choices.json", "folder"}
    yield "rfutils catalogue folder/i", {"inner.json"}
    yield "rfutils merge n", {"notes.txt"}  # no state is there
    yield "rfutils waterfall sweeps.csv --png ", {"picture.png", "folder"}
    yield "rfutils trace sweeps.csv --plot p", {"picture.png", "plot.svg"}
    yield "rfutils cut sweeps.csv -o s", {"sweeps.csv"}
    yield "rfutils trace --marker ", set()
    yield "rfutils waterfall --palette ", {"viridis", "magma", "cividis", "grey", "turbo"}
    yield "rfutils waterfall --reduce m", {"max", "mean", "min"}
    yield "rfutils mask --of ", {"maximum", "average"}
    yield "rfutils compare --of m", {"maximum", "minimum", "median"}
    yield "rfutils occupancy --by ", {"hour"}
    yield "rfutils check --as ", {"asc", "hdr", "bil", "clr", "tab", "catalogue", "setups", "recording"}
    yield "rfutils check --schema ", {"catalogue", "setups"}
    yield "rfutils check --format ", {"text", "json", "sarif"}
    yield "rfutils check --explain raster-", {"raster-missing", "raster-not-named", "raster-unknown"}
    yield "rfutils check --ignore key-u", {"key-unknown"}
    yield "rfutils dd --format ", {"text", "csv", "json"}
    yield "rfutils scale 1", {"1", "10", "11", "12", "13", "14", "15"}
    yield "rfutils scale --gain 2 1", {"1", "10", "11", "12", "13", "14", "15"}
    yield "rfutils scale 3 1", set()
    yield "rfutils range --type 1", {"1"} | {str(code) for code in range(11, 20)}
    yield "rfutils catalogue choices.json --item ", {"atten", "two words", 'comma, "quotes"'}
    yield "rfutils catalogue --format csv choices.json --item at", {"atten"}
    yield "rfutils catalogue missing.json --item ", set()
    for name in command_names(program):
        yield f"rfutils {name} --", set(options_of(output(program, name, "--help")))


def viewer_cases(viewer):
    yield "rfutils-view --", set(options_of(output(viewer, "--help")))
    yield "rfutils-view s", {"sweeps.csv"}
    yield "rfutils-view --map ", {"map.asc", "map.bil", "folder"}
    yield "rfutils-view --catalogue c", {"choices.json"}
    yield "rfutils-view --unit dBuV/", {"dBuV/m"}
    yield "rfutils-view -- rfutils freq", {"freq"}


def clean(words):
    """Without what shells add to a word: its folder, what goes on behind it, and the quotes that it needs."""
    return {re.sub(r"\\(.)", r"\1", word.strip()).removeprefix("folder/").rstrip("/=") or "folder"
            for word in words if word}


def complete(shell, share, folder, program, viewer):
    shutil.rmtree(folder, ignore_errors=True)
    home = folder / "home"
    work = folder / "work"
    (work / "folder").mkdir(parents=True)
    home.mkdir()
    for name in FILES + ["folder/inner.json"]:
        (work / name).write_text(CATALOGUE if name == "choices.json" else "")
    path = ":".join(str(each.parent) for each in (program, viewer) if each)
    environment = {"HOME": str(home), "XDG_CONFIG_HOME": str(home), "XDG_DATA_HOME": str(home), "TERM": "dumb",
                   "LC_ALL": "C.UTF-8", "PATH": path + ":" + os.environ["PATH"]}
    expected = list(cases(program)) + (list(viewer_cases(viewer)) if viewer else [])
    lines = [line for line, _ in expected]
    parts = [share / "tools"] + ([share / "viewer"] if viewer else [])
    answers = shells.SHELLS[shell](parts, lines, environment, work)
    expect(f"{shell}: number of answers", len(answers), len(lines))
    for (line, words), answer in zip(expected, answers):
        expect(f"{shell}: {line}", clean(answer), words)


def main():
    what, share, folder, program = sys.argv[1], *(pathlib.Path(path).resolve() for path in sys.argv[2:5])
    viewer = pathlib.Path(sys.argv[5]).resolve() if len(sys.argv) > 5 else None
    if what == "manual":
        manual(share, program, viewer)
    else:
        complete(what, share, folder, program, viewer)
    print("\n".join(failures) if failures else "as the help says")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
