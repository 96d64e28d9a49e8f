#!/usr/bin/env python3
"""A waterfall as people write it: one pixel for each cell, a colour for each level.

usage: waterfall.py RECORDING OUT.png
"""
import csv
import sys

from PIL import Image

LOW, HIGH = -120.0, -30.0


def color(level):
    part = min(max((level - LOW) / (HIGH - LOW), 0.0), 1.0)
    return int(255 * part), int(255 * part * part), int(255 * (1.0 - part))


def main():
    sweeps = {}
    hops = set()
    with open(sys.argv[1], encoding="utf-8") as file:
        for row in csv.reader(file):
            time = row[0] + row[1]
            low = int(row[2])
            hops.add(low)
            sweeps.setdefault(time, {})[low] = [float(level) for level in row[6:]]
    order = sorted(hops)
    times = sorted(sweeps)
    width = sum(len(sweeps[times[0]][low]) for low in order)
    image = Image.new("RGB", (width, len(times)))
    pixels = image.load()
    for y, time in enumerate(times):
        x = 0
        for low in order:
            for level in sweeps[time].get(low, []):
                pixels[x, y] = color(level)
                x += 1
    image.save(sys.argv[2])


main()
