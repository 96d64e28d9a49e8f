"""What loading costs at many sizes, in time and in memory, and what the library itself takes.

run.py measures it after the works and puts section() into docs/performance.md.
"""
import json
import math
import os
import re
import subprocess

# name of the load, elements as the plot names them, colour in the plot
LOADS = [("grid", "ASCII grid, cells", "#0072b2"), ("band", "band of singles, cells", "#56b4e9"),
         ("catalogue", "catalogue, choices", "#d55e00"), ("setups", "result setups, setups", "#e69f00"),
         ("traces", "ring of traces, traces of 1001 points", "#009e73")]
BOUNDED = ["grid", "band", "traces"]  # the peak of the others is that of QJsonDocument
LARGEST = {"grid": 2048, "band": 2048, "catalogue": 1000000, "setups": 1000000, "traces": 10000}
SMALLEST = {"grid": 256, "band": 256, "catalogue": 1000, "setups": 1000, "traces": 1}

# The cost grows with the size to this power at most: to the first but for the caches of the
# processor, which hold less and less of what is made.
MOST_POWER = 1.2
MEMORY_BESIDE = 16 << 20


def measure_costs(build, quick):
    """{load: [[elements, seconds], ...]}"""
    command = [build / "bench/scaling/bench_scaling", "--benchmark_format=json",
               "--benchmark_min_time=" + ("0" if quick else "0.1")]
    if quick:
        sizes = "|".join(f"{load}/{size}" for load, size in SMALLEST.items())
        command.append(f"--benchmark_filter=^cost_({sizes})$")
    run = subprocess.run(command, check=True, capture_output=True, text=True)
    costs = {}
    for entry in json.loads(run.stdout)["benchmarks"]:
        if entry.get("error_occurred"):
            raise RuntimeError(f"{entry['name']}: {entry['error_message']}")
        load = entry["name"].partition("/")[0].removeprefix("cost_")
        costs.setdefault(load, []).append([entry["elements"], entry["cpu_time"] / 1e3])
    return costs


def power_of(points):
    """The power of the size with which the cost grows from the smallest to the largest."""
    (size, cost), (largest, most) = points[0], points[-1]
    return math.log(most / cost) / math.log(largest / size)


def measure_memory(build, quick):
    """{load: {size, peak, bound}} in bytes, each load in a process of its own."""
    memory = {}
    for load in BOUNDED:
        size = (SMALLEST if quick else LARGEST)[load]
        run = subprocess.run([build / "bench/scaling/load_memory", load, str(size)], check=True,
                             capture_output=True, text=True)
        peak, held = map(int, run.stdout.split())
        memory[load] = {"size": size, "peak": peak, "bound": held + MEMORY_BESIDE}
    return memory


def measure_library(build):
    """Size of the library's parts, and what the dynamic loader does for a program that has it."""
    library = (build / "rfUtils/librfUtils.so").resolve()
    sizes = subprocess.run(["size", library], check=True, capture_output=True, text=True)
    text, data, bss = map(int, sizes.stdout.splitlines()[1].split()[:3])
    facts = {"text": text, "data": data, "zero": bss}
    for who in ("empty_with_library", "empty_qt"):
        run = subprocess.run([build / "bench/tools" / who], check=True, capture_output=True,
                             text=True, env={**os.environ, "LD_DEBUG": "statistics"})
        found = re.search(r"number of relocations:\s*(\d+)", run.stderr)
        facts[who] = int(found.group(1)) if found else 0
    return facts


def measure(build, quick):
    return {"costs": measure_costs(build, quick), "memory": measure_memory(build, quick),
            "library": measure_library(build)}


def missed(facts):
    """What misses its target, in words."""
    found = [f"the cost of {load} grows with the size to the power of {power_of(points):.2f}"
             for load, points in facts["costs"].items() if power_of(points) > MOST_POWER]
    found += [f"the memory peak of {load} is {told['peak']} bytes, more than {told['bound']}"
              for load, told in facts["memory"].items()
              if told["peak"] > told["bound"]]
    return found


# The plot ----------------------------------------------------------------------------------------

WIDTH, HEIGHT = 860, 440
LEFT, RIGHT, TOP, BOTTOM = 70, 290, 20, 50


def plot(costs):
    """The costs over the sizes as an SVG picture, both on logarithmic scales."""
    sizes = [size for points in costs.values() for size, _ in points]
    times = [cost for points in costs.values() for _, cost in points]
    lowest = {"x": math.floor(math.log10(min(sizes))), "y": math.floor(math.log10(min(times)))}
    highest = {"x": math.ceil(math.log10(max(sizes))), "y": math.ceil(math.log10(max(times)))}

    def x(size):
        part = (math.log10(size) - lowest["x"]) / (highest["x"] - lowest["x"])
        return LEFT + part * (WIDTH - LEFT - RIGHT)

    def y(cost):
        part = (math.log10(cost) - lowest["y"]) / (highest["y"] - lowest["y"])
        return HEIGHT - BOTTOM - part * (HEIGHT - TOP - BOTTOM)

    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
           f'viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif" font-size="12">',
           f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>']

    def line(x1, y1, x2, y2, style):
        out.append(f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" {style}/>')

    def text(at, up, words, style=""):
        out.append(f'<text x="{at:.1f}" y="{up:.1f}" {style}>{words}</text>')

    grid = 'stroke="#dddddd"'
    for power in range(lowest["x"], highest["x"] + 1):
        at = x(10.0 ** power)
        line(at, TOP, at, HEIGHT - BOTTOM, grid)
        text(at, HEIGHT - BOTTOM + 18, f"{10 ** power:,}", 'text-anchor="middle"')
    for power in range(lowest["y"], highest["y"] + 1):
        up = y(10.0 ** power)
        line(LEFT, up, WIDTH - RIGHT, up, grid)
        unit, scale = next((u, s) for u, s in (("s", 0), ("ms", -3), ("µs", -6), ("ns", -9))
                           if power >= s)
        text(LEFT - 8, up + 4, f"{10 ** (power - scale)} {unit}", 'text-anchor="end"')
    text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 10, "elements", 'text-anchor="middle"')

    # Every parallel to it is a cost in proportion to the size.
    decades = min(highest["x"] - lowest["x"], highest["y"] - lowest["y"])
    line(x(10.0 ** lowest["x"]), y(10.0 ** lowest["y"]), x(10.0 ** (lowest["x"] + decades)),
         y(10.0 ** (lowest["y"] + decades)), 'stroke="#888888" stroke-dasharray="4 4"')

    place = TOP + 10
    for load, label, color in LOADS:
        points = " ".join(f"{x(size):.1f},{y(cost):.1f}" for size, cost in costs[load])
        out.append(f'<polyline points="{points}" fill="none" stroke="{color}" stroke-width="2"/>')
        for size, cost in costs[load]:
            out.append(f'<circle cx="{x(size):.1f}" cy="{y(cost):.1f}" r="3" fill="{color}"/>')
        line(WIDTH - RIGHT + 14, place - 4, WIDTH - RIGHT + 34, place - 4,
             f'stroke="{color}" stroke-width="2"')
        text(WIDTH - RIGHT + 40, place, label)
        place += 20
    line(WIDTH - RIGHT + 14, place - 4, WIDTH - RIGHT + 34, place - 4,
         'stroke="#888888" stroke-dasharray="4 4"')
    text(WIDTH - RIGHT + 40, place, "in proportion to the size")
    out.append("</svg>")
    return "\n".join(out) + "\n"


# The text ----------------------------------------------------------------------------------------

def mebibytes(number):
    return f"{number / 2**20:.0f} MiB"


def cost_table(costs):
    lines = ["| load | the largest | a single element there | power of the size |",
             "|---|---|---|---|"]
    for load, label, _ in LOADS:
        size, cost = costs[load][-1]
        kind, _, elements = label.rpartition(", ")
        lines.append(f"| {kind} | {size:,.0f} {elements} | {cost / size * 1e9:.3g} ns "
                     f"| {power_of(costs[load]):.2f} |")
    return "\n".join(lines)


def memory_table(memory):
    lines = ["| load | peak | object + file + 16 MiB | |", "|---|---|---|---|"]
    labels = {load: label for load, label, _ in LOADS}
    for load, told in memory.items():
        lines.append(f"| {labels[load].partition(',')[0]} | {mebibytes(told['peak'])} "
                     f"| {mebibytes(told['bound'])} "
                     f"| {'met' if told['peak'] <= told['bound'] else '**missed**'} |")
    return "\n".join(lines)


def section(facts):
    library = facts["library"]
    return f"""## Cost and size

![time of each loader over the number of its elements](images/cost.svg)

{cost_table(facts['costs'])}

The last column is the power of the size with which the cost grows from the smallest size to the largest; 1 is a cost in
proportion. What is beyond 1 is memory: the choices of a large catalogue no longer fit the processor's caches, and each
page that a growing ring touches first costs the kernel's time.

## Memory

The peak of resident memory during the largest load above, in a process of its own, beside what it may be.

{memory_table(facts['memory'])}

Catalogues and result setups have no bound here: while they load, `QJsonDocument` holds several times the size of the file.

## The library itself

{library['text'] / 1024:.0f} KiB of code and constants, {library['data'] / 1024:.0f} KiB of data that the loader relocates,
{library['zero']} bytes that begin as zeros. A program with the library, Qt Core and Qt Gui takes {library['empty_with_library']:,} relocations at
its start, one with Qt alone {library['empty_qt']:,}; the time is in the table above."""
