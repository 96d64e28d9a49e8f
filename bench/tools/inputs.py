#!/usr/bin/env python3
"""Writes what the command reads in the measurements; the same bytes in every run.

usage: inputs.py values FILE     a million values in every unit that is read without an antenna
       inputs.py recording FILE  100 MB of sweeps as rtl_power writes them: 8 hops of 1025 levels
       inputs.py raster FILE     an ASCII grid of 2048 x 2048 cells of two decimals, 8 bytes each
       inputs.py exact FILE      the same of 17 decimals, 23 bytes each
       inputs.py catalogue FILE  9 MB: 125,000 choices in 2500 items
"""
import random
import sys

VALUES = 1000000
UNITS = [("", -120, 30), ("dBm", -120, 30), ("dBV", -130, 20), ("dBmV", -70, 80), ("dBuV", -10, 140),
         ("V", 0.1, 90), ("mV", 1, 900), ("µV", 1, 900), ("nV", 1, 900), ("pV", 1, 900),
         ("W", 0.1, 90), ("mW", 1, 900), ("µW", 1, 900), ("nW", 1, 900), ("pW", 1, 900)]

RECORDING_BYTES = 100000000
HOPS = 8
HOP_HERTZ = 2500000
LEVELS = 1025

SIDE = 2048

ITEMS = 2500
CHOICES = 50


def write_values(file):
    draw = random.Random(1)
    for i in range(VALUES):
        unit, low, high = UNITS[i % len(UNITS)]
        blank = " " if draw.random() < 0.5 else ""
        file.write(f"{draw.uniform(low, high):.2f}{blank}{unit}\n")


def write_recording(file):
    draw = random.Random(2)
    levels = [f"{-30 - i / 100:.2f}" for i in range(9000)]
    written = 0
    second = 0
    while written < RECORDING_BYTES:
        for hop in range(HOPS):
            low = 88000000 + hop * HOP_HERTZ
            head = (f"2024-05-04, 21:{second // 60:02}:{second % 60:02}, {low}, {low + HOP_HERTZ}, "
                    f"{HOP_HERTZ / (LEVELS - 1):.2f}, 12, ")
            line = head + ", ".join(draw.choices(levels, k=LEVELS)) + "\n"
            file.write(line)
            written += len(line)
        second += 1


def write_grid(file, decimals):
    draw = random.Random(3)
    file.write(f"ncols {SIDE}\nnrows {SIDE}\nxllcorner 300000\nyllcorner 5000000\ncellsize 30\n"
               "NODATA_value -9999\n")
    for _ in range(SIDE):
        file.write(" ".join(f"{draw.uniform(1000, 9000):.{decimals}f}" for _ in range(SIDE)) + "\n")


def write_catalogue(file):
    for item in range(ITEMS):
        choices = ",\n".join(
            f'    {{"label": "Choice {i}", "id": "choice{i}", "enum": {i}, "dispSeq": {i + 1}}}'
            for i in range(CHOICES))
        file.write(f'{"," if item else "{"}\n  "item{item}": [\n{choices}\n  ]')
    file.write("\n}\n")


def main():
    writers = {"values": write_values, "recording": write_recording,
               "raster": lambda file: write_grid(file, 2), "exact": lambda file: write_grid(file, 17),
               "catalogue": write_catalogue}
    if len(sys.argv) != 3 or sys.argv[1] not in writers:
        print(__doc__, file=sys.stderr)
        return 2
    with open(sys.argv[2], "w", encoding="utf-8") as file:
        writers[sys.argv[1]](file)
    return 0


sys.exit(main())
