#!/usr/bin/env python3
"""Converts a million levels and again, as an array or one after the other.

usage: levels.py array|scalars TIMES
"""
import sys

import numpy as np

import rfutils

LEVELS = np.linspace(-130.0, 30.0, 1000000)

how, times = sys.argv[1], int(sys.argv[2])
for _ in range(times):
    if how == "array":
        volts = rfutils.convert(LEVELS, "V")
    else:
        volts = np.array([rfutils.convert(level, "V") for level in LEVELS])
assert volts[-1] == rfutils.convert(30.0, "V")
