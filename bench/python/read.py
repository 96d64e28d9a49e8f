#!/usr/bin/env python3
"""Reads the levels of a recording into an array of sweeps x points, by the package or by csv and NumPy. It does so
several times, one behind the other, so that the start of the interpreter counts for little.

usage: read.py ours|csv FILE
"""
import csv
import sys

import numpy as np


def read_by_csv(file):
    """The hops of a sweep one behind the other; rtl_power repeats the last level of a line."""
    sweeps = {}
    with open(file, newline="", encoding="ascii") as lines:
        for row in csv.reader(lines):
            sweeps.setdefault(row[0] + row[1], []).append(np.array(row[6:-1], dtype=np.float64))
    return np.array([np.concatenate(hops) for hops in sweeps.values()])


def read_by_package(file):
    import rfutils
    return rfutils.Recording(file).levels


READINGS = 8

read = {"ours": read_by_package, "csv": read_by_csv}[sys.argv[1]]
for _ in range(READINGS):
    levels = read(sys.argv[2])
    print(levels.shape, round(levels.sum(), 3))
