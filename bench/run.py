#!/usr/bin/env python3
"""Measures every work of targets.json beside its alternatives and writes the table of ratios.

usage: run.py --build FOLDER [--check] [--quick] [WORK...]

FOLDER holds a build with RFUTILS_BENCH. All times are processor time, of the program and of the kernel
for it: other programs on the machine change that least. A row's ratio is that of the medians of all
repetitions, its spread the range that 95 % of the ratios of resampled repetitions lie in.

targets.json is a list of rows:
    work     name of the work; a benchmark is called <work>/<who>, "ours" or the alternative
    label    the work as the table tells it, in Markdown
    program  bench_<program> measures it, everybody in turn in one process; or
    commands who: shell command. Measured here, in processes that take turns. A command finds the folder
             of programs in $TOOLS, of the Python package in $PYTHON, of the repository in $SOURCE, and a
             scratch folder in $DATA;
    prepare  optional with commands: shell command that makes what they read
    ours     optional: who is ours; "ours" where it is not told
    against  the alternative; or {who: times, ...}, the sum of these multiples of several;
             or null with the senses "a second" and "milliseconds"
    sense    "at most": our time is at most `limit` times theirs
             "at least as fast": we are at least `limit` times as fast
             "a second": we do at least `limit` of the `count` things of the command a second
             "milliseconds": we take at most `limit` ms
             "measure": there is no target; `limit` is null
"""
import argparse
import json
import os
import pathlib
import platform
import random
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

import scaling

SOURCE = pathlib.Path(__file__).resolve().parent.parent
REPETITIONS = 15
COMMAND_REPETITIONS = 7
SECONDS_A_REPETITION = 0.05
RESAMPLINGS = 1000

VERSIONS = {"GDAL": "libgdal-dev", "PROJ": "libproj-dev", "KDE Frameworks": "libkf5coreaddons-dev",
            "Qt": "qtbase5-dev", "nlohmann-json": "nlohmann-json3-dev", "mawk": "mawk"}


def fail(text):
    print(f"bench: {text}", file=sys.stderr)
    sys.exit(1)


# Measuring ---------------------------------------------------------------------------------------

def run_program(program, works, build, scratch, quick):
    """{benchmark: [seconds of each repetition]} of one program's works."""
    executable = build / "bench" / program / f"bench_{program}"
    out = scratch / f"{program}.json"
    names = "|".join(re.escape(work) for work in sorted(works))
    command = [executable, f"--benchmark_filter=^({names})/", f"--benchmark_out={out}",
               "--benchmark_out_format=json"]
    if quick:
        command.append("--benchmark_min_time=0")
    else:
        command += ["--benchmark_enable_random_interleaving=true",
                    f"--benchmark_repetitions={REPETITIONS}",
                    f"--benchmark_min_time={SECONDS_A_REPETITION}"]
    run = subprocess.run(command, env={**os.environ, "TMPDIR": str(scratch)}, check=False,
                         stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    if run.returncode != 0:
        fail(f"{executable.name} ended with {run.returncode}\n{run.stderr}")
    samples = {}
    for entry in json.loads(out.read_text())["benchmarks"]:
        if entry.get("error_occurred"):
            fail(f"{entry['name']}: {entry['error_message']}")
        if entry["run_type"] == "iteration":
            unit = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[entry["time_unit"]]
            name = entry["run_name"].partition("/iterations:")[0]
            samples.setdefault(name, []).append(entry["cpu_time"] * unit)
    return samples


def processor_seconds(command, environment):
    child = subprocess.Popen(["/bin/sh", "-c", command], env=environment)
    _, status, usage = os.wait4(child.pid, 0)
    child.returncode = os.waitstatus_to_exitcode(status)
    if child.returncode != 0:
        fail(f"ended with {child.returncode}: {command}")
    return usage.ru_utime + usage.ru_stime


def run_commands(row, build, scratch, quick):
    """{<work>/<who>: [seconds of each repetition]} of a row's commands, which take turns."""
    environment = {**os.environ, "TOOLS": str(build / "tools"), "PYTHON": str(build / "python"),
                   "SOURCE": str(SOURCE), "DATA": str(scratch)}
    if "prepare" in row:
        processor_seconds(row["prepare"], environment)
    samples = {f"{row['work']}/{who}": [] for who in row["commands"]}
    for _ in range(1 if quick else COMMAND_REPETITIONS):
        for who, command in row["commands"].items():
            samples[f"{row['work']}/{who}"].append(processor_seconds(command, environment))
    return samples


def measure(rows, build, quick):
    # Files on a disk, as they are loaded from, though they stay in the system's cache: a file system in
    # memory may be several times slower to read, and that would hide what the loaders do.
    with tempfile.TemporaryDirectory(dir=build) as name:
        scratch = pathlib.Path(name)
        samples = {}
        programs = {}
        for row in rows:
            if "program" in row:
                programs.setdefault(row["program"], set()).add(row["work"])
        for program, works in programs.items():
            print(f"bench: {program}", flush=True)
            samples.update(run_program(program, works, build, scratch, quick))
        for row in rows:
            if "commands" in row and not set(names_of(row)) <= samples.keys():
                print(f"bench: {row['work']}", flush=True)
                samples.update(run_commands(row, build, scratch, quick))
    return samples


# Ratios ------------------------------------------------------------------------------------------

def ours_of(row):
    return f"{row['work']}/{row.get('ours', 'ours')}"


def weights_of(row):
    """{benchmark: times} of what a row is compared with."""
    against = row["against"]
    if against is None:
        return {}
    weights = against if isinstance(against, dict) else {against: 1.0}
    return {f"{row['work']}/{who}": times for who, times in weights.items()}


def names_of(row):
    return [ours_of(row), *weights_of(row)]


def figure(row, medians):
    """What the row's target speaks of, from the median time of each benchmark."""
    ours = medians[ours_of(row)]
    if row["sense"] == "a second":
        return row["count"] / ours
    if row["sense"] == "milliseconds":
        return ours * 1e3
    theirs = sum(times * medians[name] for name, times in weights_of(row).items())
    return ours / theirs if row["sense"] in ("at most", "measure") else theirs / ours


def evaluate(row, samples):
    """The row's ratio, its spread, and whether it misses its target by more than that."""
    names = names_of(row)
    value = figure(row, {name: statistics.median(samples[name]) for name in names})
    draw = random.Random(row["work"])
    resampled = sorted(
        figure(row, {name: statistics.median(draw.choices(samples[name], k=len(samples[name])))
                     for name in names})
        for _ in range(RESAMPLINGS))
    low = resampled[round(0.025 * (RESAMPLINGS - 1))]
    high = resampled[round(0.975 * (RESAMPLINGS - 1))]
    limit = row["limit"]
    missed = {"at most": lambda: low > limit, "measure": lambda: False,
              "milliseconds": lambda: low > limit,
              "at least as fast": lambda: high < limit, "a second": lambda: high < limit}
    return {"work": row["work"], "label": row["label"], "against": row["against"],
            "sense": row["sense"], "limit": limit, "ratio": value, "spread": [low, high],
            "missed": missed[row["sense"]](),
            "seconds": {name.partition("/")[2]: statistics.median(samples[name])
                        for name in samples if name.startswith(row["work"] + "/")}}


# Telling -----------------------------------------------------------------------------------------

def number(value):
    if value >= 1e5:
        return f"{value / 1e6:.2f} million"
    return f"{value:.2f}" if value < 100 else f"{value:.0f}"


def target_text(row):
    return {"at most": lambda: f"at most {row['limit']:g} times the time",
            "at least as fast": lambda: f"at least {row['limit']:g} times as fast",
            "a second": lambda: f"at least {number(row['limit'])} a second",
            "milliseconds": lambda: f"at most {row['limit']:g} ms",
            "measure": lambda: ""}[row["sense"]]()


def duration(seconds):
    for unit, scale in (("s", 1.0), ("ms", 1e-3), ("µs", 1e-6)):
        if seconds >= scale:
            return f"{seconds / scale:.3g} {unit}"
    return f"{seconds / 1e-9:.3g} ns"


def table(results):
    lines = ["| work | beside | ratio | spread | target | |", "|---|---|---|---|---|---|"]
    for row in results:
        against = row["against"]
        if isinstance(against, dict):
            against = " + ".join(f"{times:g} {who}" for who, times in against.items())
        met = "" if row["limit"] is None else "**missed**" if row["missed"] else "met"
        lines.append(f"| {row['label']} | {against or ''} | {number(row['ratio'])} "
                     f"| {number(row['spread'][0])} to {number(row['spread'][1])} "
                     f"| {target_text(row)} | {met} |")
    return "\n".join(lines)


def times_table(results):
    lines = ["| work | who | processor time |", "|---|---|---|"]
    told = set()
    for row in results:
        for who, seconds in row["seconds"].items():
            if (row["work"], who) not in told:
                told.add((row["work"], who))
                lines.append(f"| {row['work']} | {who} | {duration(seconds)} |")
    return "\n".join(lines)


def first_match(pattern, path, default):
    try:
        match = re.search(pattern, pathlib.Path(path).read_text(encoding="utf-8"), re.M)
    except OSError:
        match = None
    return match.group(1).strip() if match else default


def compiler(build):
    path = first_match(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", build / "CMakeCache.txt", "c++")
    version = subprocess.run([path, "--version"], check=False, capture_output=True, text=True)
    return version.stdout.partition("\n")[0] or path


def installed_versions():
    if shutil.which("dpkg-query") is None:
        return ""
    told = []
    for name, package in VERSIONS.items():
        query = subprocess.run(["dpkg-query", "-W", "-f=${Version}", package], check=False,
                               capture_output=True, text=True)
        if query.returncode == 0:
            told.append(f"{name} {re.split('[+-]', query.stdout)[0]}")
    return ", ".join(told)


def machine(build):
    memory = int(first_match(r"^MemTotal:\s*(\d+)", "/proc/meminfo", "0")) / 2**20
    processor = first_match(r"^model name\s*:\s*(.*)$", "/proc/cpuinfo", platform.processor())
    return {"processor": f"{processor} ({platform.machine()})", "cores": os.cpu_count(),
            "memory": f"{memory:.0f} GiB",
            "system": first_match(r'^PRETTY_NAME="?([^"\n]*)', "/etc/os-release", platform.system()),
            "compiler": compiler(build), "alternatives": installed_versions()}


def notes():
    """What people wrote about the figures: one file a section, in the order of their names."""
    files = sorted((SOURCE / "bench" / "notes").glob("*.md"))
    return "\n\n".join(file.read_text(encoding="utf-8").strip() for file in files)


def document(results, where, facts):
    return f"""# Performance

Written by `scripts/bench`; the remarks come from `bench/notes/`. Ratios of one run compare our time with that of
what a user would take instead, on the same input. The machine: {where['processor']}, {where['cores']} cores,
{where['memory']} of memory, {where['system']}, {where['compiler']}, release build. The alternatives:
{where['alternatives']}.

{table(results)}

A ratio is that of the medians of {REPETITIONS} repetitions ({COMMAND_REPETITIONS} of a whole command) of processor time; everybody
takes turns. Its spread is the range that holds 95 % of the ratios of resampled repetitions. `scripts/bench --check` fails
where the whole spread is on the wrong side of the target.

{notes()}

{scaling.section(facts)}

## Times

For orientation only; they hold for the machine above.

{times_table(results)}
"""


def write(path, text):
    path.write_text(text, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(usage=__doc__.partition("usage: ")[2].partition("\n")[0])
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("works", nargs="*")
    arguments = parser.parse_args()

    rows = json.loads((SOURCE / "bench" / "targets.json").read_text(encoding="utf-8"))
    unknown = set(arguments.works) - {row["work"] for row in rows}
    if unknown:
        fail(f"no work {', '.join(sorted(unknown))} in bench/targets.json")
    if arguments.works:
        rows = [row for row in rows if row["work"] in arguments.works]

    build = arguments.build.resolve()
    samples = measure(rows, build, arguments.quick)
    missing = {name for row in rows for name in names_of(row)} - samples.keys()
    if missing:
        fail(f"no benchmark {', '.join(sorted(missing))}")
    facts = None
    if not arguments.works:
        print("bench: cost and size, memory", flush=True)
        facts = scaling.measure(build, arguments.quick)
    if arguments.quick:
        print(f"bench: {len(samples)} benchmarks run")
        return 0

    results = [evaluate(row, samples) for row in rows]
    print(table(results))
    where = machine(build)
    record = json.dumps({"machine": where, "rows": results, "scaling": facts}, indent=1,
                        ensure_ascii=False) + "\n"
    write(build / "results.json", record)
    if not arguments.works:
        write(SOURCE / "docs" / "performance.json", record)
        write(SOURCE / "docs" / "performance.md", document(results, where, facts))
        write(SOURCE / "docs" / "images" / "cost.svg", scaling.plot(facts["costs"]))
    missed = [row for row in results if row["missed"]]
    for row in missed:
        print(f"bench: {row['work']} misses its target: {number(row['ratio'])}, "
              f"{target_text(row)}", file=sys.stderr)
    grown = scaling.missed(facts) if facts else []
    for words in grown:
        print(f"bench: {words}", file=sys.stderr)
    return 1 if arguments.check and (missed or grown) else 0


if __name__ == "__main__":
    sys.exit(main())
