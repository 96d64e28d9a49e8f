"""Calls what allocates, so many times: leaks.py TIMES. leaks.sh runs it under valgrind."""
import os
import sys

import numpy as np

import rfutils

os.chdir(os.environ["RFUTILS_SAMPLES"])
levels = np.linspace(-100.0, 0.0, 100)
state = rfutils.Recording("wifi_band.csv", last=3).state("points")
for _ in range(int(sys.argv[1])):
    rfutils.convert(levels, "V")
    rfutils.convert(-30.0, "dBuV/m", center_hz=1e8)
    rfutils.text(levels, "W")
    rfutils.range_text(2, -10, 20)
    rfutils.State.merged([state]).points()
    recording = rfutils.Recording("wifi_band.csv", last=3)
    recording.levels, recording.peaks(above_db=10), recording.points(more=True)
    recording.occupancy(above_db=20), recording.power((2402e6, 2422e6), series=True)
    rfutils.control_points("terrain.tab"), rfutils.Catalogue("catalogue.json"), rfutils.Setups("setups.json")
    for refused in (lambda: rfutils.convert(0.0, "dBm", unit="V"), lambda: rfutils.Catalogue("missing.json"),
                    lambda: rfutils.Recording("levels.txt").peaks()):
        try:
            refused()
        except (ValueError, rfutils.InputError):
            pass
