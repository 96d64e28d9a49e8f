#!/usr/bin/env python3
"""Makes the sample files of this folder.

    generate.py           writes them beside this program
    generate.py --check   compares them with what it would write; exit status 1 if they differ

The numbers come from fixed seeds and from + - * / alone, so that no mathematical library's last
digit shows: the same bytes on every machine.
"""

import random
import struct
import sys
from datetime import datetime, timedelta
from pathlib import Path

HERE = Path(__file__).resolve().parent


def bell(rng):
    """A random number near 0, nearly normal, with standard deviation 1."""
    total = -6.0  # a loop: sum() adds floats in another way since Python 3.12
    for _ in range(12):
        total += rng.random()
    return total


def smooth(t):
    return t * t * (3.0 - 2.0 * t)


# ---- levels and catalogues -------------------------------------------------------------------

LEVELS = """\
10
0
-7.5
-13.25
-30
-47
-62.125
-80
-96.3
-107
-120
-174
"""

CATALOGUE = {
    "attenuation": [
        ("Auto", "auto", 0, 1),
        ("0 dB", "db0", 1, 2),
        ("10 dB", "db10", 2, 3),
        ("20 dB", "db20", 3, 4),
        ("30 dB", "db30", 4, 5),
        ("40 dB (service only)", "db40", 5, 0),
    ],
    "detector": [
        ("Auto peak", "autoPeak", 0, 1),
        ("Positive peak", "posPeak", 1, 2),
        ("Negative peak", "negPeak", 2, 3),
        ("Sample", "sample", 3, 4),
        ("RMS", "rms", 4, 5),
        ("Average", "average", 5, 6),
        ("Quasi-peak", "quasiPeak", 6, 7),
    ],
    "levelUnit": [
        ("dBm", "dbm", 0, 1),
        ("dBV", "dbv", 1, 2),
        ("dBmV", "dbmv", 2, 3),
        ("dBµV", "dbuv", 3, 4),
        ("Volt", "volt", 4, 5),
        ("Watt", "watt", 5, 6),
        ("dBµV/m", "dbuvm", 16, 7),
        ("V/m", "vm", 19, 8),
        ("W/m²", "wm2", 20, 9),
    ],
    "resolutionBandwidth": [
        ("Auto", "auto", 0, 1),
        ("1 kHz", "khz1", 1, 2),
        ("10 kHz", "khz10", 2, 3),
        ("30 kHz", "khz30", 3, 4),
        ("100 kHz", "khz100", 4, 5),
        ("300 kHz", "khz300", 5, 6),
        ("1 MHz", "mhz1", 6, 7),
        ("3 MHz", "mhz3", 7, 8),
    ],
    "sweepMode": [
        ("Continuous", "continuous", 0, 1),
        ("Single", "single", 1, 2),
        ("Fast", "fast", 2, 3),
    ],
    "traceMode": [
        ("Clear write", "clearWrite", 0, 1),
        ("Maximum hold", "maxHold", 1, 2),
        ("Minimum hold", "minHold", 2, 3),
        ("Average", "average", 3, 4),
        ("Capture", "capture", 4, 5),
        ("Blank", "blank", 5, 6),
    ],
    "trigger": [
        ("Free run", "free", 0, 1),
        ("Video", "video", 1, 2),
        ("External, rising edge", "extRise", 2, 3),
        ("External, falling edge", "extFall", 3, 4),
        ("Second pulse of the receiver", "pps", 4, 5),
    ],
}

SETUPS = {
    "coverage": [
        ("driveTest", "Drive test"),
        ("walkTest", "Walk test inside a building"),
        ("fieldMap", "Field strength on a map"),
    ],
    "interference": [
        ("spectrogram", "Spectrogram"),
        ("bearing", "Bearing of a source"),
        ("occupancy", "Channel occupancy"),
    ],
    "spectrum": [
        ("channelPower", "Channel power"),
        ("occupiedBandwidth", "Occupied bandwidth"),
        ("adjacentChannel", "Adjacent channel power"),
        ("spuriousEmission", "Spurious emission"),
    ],
}


def json_groups(groups, line):
    """A JSON object of arrays with one element in a line."""
    blocks = []
    for key, rows in groups.items():
        blocks.append('  "%s": [\n    %s\n  ]' % (key, ",\n    ".join(line % row for row in rows)))
    return "{\n%s\n}\n" % ",\n".join(blocks)


def catalogue():
    return json_groups(CATALOGUE, '{"label": "%s", "id": "%s", "enum": %d, "dispSeq": %d}')


def setups():
    return json_groups(SETUPS, '{"id": "%s", "label": "%s"}')


# ---- recordings ------------------------------------------------------------------------------


class Walk:
    """A level that wanders: each step is pulled back to the middle."""

    def __init__(self, rng, step):
        self.rng, self.step, self.now = rng, step, 0.0

    def next(self):
        self.now = self.now * 0.96 + bell(self.rng) * self.step
        return self.now


# carrier in MHz, mean level in dBm, how strongly it fades in dB per sweep
FM_STATIONS = [
    (88.1, -52.0, 0.4), (89.3, -78.0, 1.1), (90.4, -63.0, 0.6), (91.9, -84.0, 1.6),
    (92.8, -45.0, 0.3), (94.2, -71.0, 0.9), (95.5, -58.0, 0.5), (96.7, -81.0, 1.4),
    (98.3, -41.0, 0.3), (99.6, -66.0, 0.7), (101.1, -74.0, 1.2), (102.4, -55.0, 0.4),
    (103.8, -87.0, 1.3), (105.2, -48.0, 0.3), (106.5, -69.0, 0.8), (107.7, -61.0, 0.6),
]
FM_LOW, FM_HOP, FM_HOPS, FM_BINS, FM_SWEEPS = 88_000_000, 2_500_000, 8, 64, 240
FM_FLOOR = -95.0
FM_ON_AIR_LATE = (103.8, 90)  # this one switches its transmitter on at that sweep


def fm_station(distance_hz, level):
    """The level beside a carrier: nearly flat over the deviation, then falling."""
    part = distance_hz / 75_000.0
    return level - 9.0 * part * part


# the next day 88.1 MHz is weaker, 96.7 MHz silent and 97.5 MHz new
FM_NEXT_STATIONS = [(88.1, -64.0, 0.4)] + [
    station for station in FM_STATIONS if station[0] not in (88.1, 96.7)] + [(97.5, -68.0, 0.5)]
FM_NEXT_SWEEPS = 24


def fm_sweeps(rng, stations, time, sweeps):
    """Sweeps as rtl_power writes them: one time for all hops, the last value of a line twice."""
    fading = [Walk(rng, station[2]) for station in stations]
    step = FM_HOP / FM_BINS
    lines = []
    for sweep in range(sweeps):
        levels = [station[1] + walk.next() for station, walk in zip(stations, fading)]
        hops = []
        for hop in range(FM_HOPS):
            low = FM_LOW + hop * FM_HOP
            values = []
            for i in range(FM_BINS):
                frequency = low + i * step
                value = FM_FLOOR + 1.1 * bell(rng)
                for (carrier, _, _), level in zip(stations, levels):
                    distance = frequency - carrier * 1e6
                    silent = carrier == FM_ON_AIR_LATE[0] and sweep < FM_ON_AIR_LATE[1]
                    if -400_000.0 < distance < 400_000.0 and not silent:
                        value = max(value, fm_station(distance, level) + 0.8 * bell(rng))
                values.append("%.2f" % value)
            if rng.random() < 0.006:
                values[rng.randrange(FM_BINS)] = "nan"
            if rng.random() < 0.004:
                values[rng.randrange(FM_BINS)] = "-inf"
            head = "%s, %d, %d, %.2f, %d" % (
                time.strftime("%Y-%m-%d, %H:%M:%S"), low, low + FM_HOP, step, 128)
            hops.append(", ".join([head] + values + values[-1:]))
        if sweep % 17 == 5:  # a hop that came late
            late = hops.pop(rng.randrange(FM_HOPS - 1))
            hops.append(late)
        if sweep == 140:  # a hop that got lost
            hops.pop(3)
        lines += hops
        time += timedelta(seconds=10)
    return "\n".join(lines) + "\n"


def fm_band():
    return fm_sweeps(random.Random(8808), FM_STATIONS, datetime(2024, 5, 4, 21, 15, 0), FM_SWEEPS)


def fm_next_day():
    return fm_sweeps(random.Random(8809), FM_NEXT_STATIONS, datetime(2024, 5, 5, 21, 15, 0), FM_NEXT_SWEEPS)


# centre in MHz, level in dBm, share of the time on air
WIFI_CHANNELS = [(2412.0, -47.0, 0.6), (2437.0, -58.0, 0.3), (2462.0, -52.0, 0.8)]
WIFI_LOW, WIFI_SWEEPS, WIFI_FLOOR = 2400, 60, -79.0


def wifi_band():
    """Sweeps as hackrf_sweep writes them: 5 bins a line, two 5 MHz pieces of each 20 MHz tuning."""
    rng = random.Random(2437)
    time = datetime(2024, 5, 4, 14, 2, 11, 308551)
    lines = []
    for _ in range(WIFI_SWEEPS):
        on_air = [rng.random() < channel[2] for channel in WIFI_CHANNELS]
        hopping = WIFI_LOW + 2 + rng.randrange(79)  # a narrow signal that hops over the band
        for tuning in range(0, 100, 20):
            for start in (0, 10, 5, 15):
                low = WIFI_LOW + tuning + start
                values = []
                for i in range(5):
                    centre = low + i + 0.5
                    value = WIFI_FLOOR + 1.8 * bell(rng)
                    for (channel, level, _), active in zip(WIFI_CHANNELS, on_air):
                        part = (centre - channel) / 8.5
                        if active and -1.4 < part < 1.4:
                            edge = max(0.0, part * part - 1.0)
                            value = max(value, level - 26.0 * edge + 1.5 * bell(rng))
                    if low + i == hopping:
                        value = max(value, -61.0 + 2.0 * bell(rng))
                    values.append("%.2f" % value)
                stamp = time + timedelta(microseconds=620 * (tuning // 5))
                lines.append("%s, %d, %d, %.2f, %d, %s" % (
                    stamp.strftime("%Y-%m-%d, %H:%M:%S.%f"), low * 1_000_000, (low + 5) * 1_000_000,
                    1_000_000.0, 20, ", ".join(values)))
        time += timedelta(microseconds=14_870 + rng.randrange(400))
    return "\n".join(lines) + "\n"


# loss of a cable between antenna and receiver
FM_CABLE = """\
frequencyMHz,dB
80,1.00
100,1.25
120,1.40
"""

# limits for the three channels above; the last limit is one that the hopping signal breaks
WIFI_MASK = """\
frequencyMHz,upper,lower
2400,-60,
2402,-40,-95
2422,-40,-95
2426,-65,
2426,-52,-95
2448,-52,-95
2450,-45,
2474,-45,
2476,-70,
2500,-70,
"""


# ---- terrain ---------------------------------------------------------------------------------

NO_DATA = -9999.0


class Relief:
    """Hills from layers of random heights on ever finer meshes, joined smoothly."""

    def __init__(self, seed, mesh, layers):
        rng = random.Random(seed)
        self.layers = []
        amplitude = 1.0
        for _ in range(layers):
            side = 96
            heights = [[rng.random() for _ in range(side)] for _ in range(side)]
            self.layers.append((mesh, amplitude, heights))
            mesh, amplitude = mesh / 2.0, amplitude * 0.47

    def at(self, col, row):
        """Height between 0 and 1."""
        total = weight = 0.0
        for mesh, amplitude, heights in self.layers:
            x, y = col / mesh, row / mesh
            i, j = int(x), int(y)
            u, v = smooth(x - i), smooth(y - j)
            top = heights[j][i] * (1.0 - u) + heights[j][i + 1] * u
            bottom = heights[j + 1][i] * (1.0 - u) + heights[j + 1][i + 1] * u
            total += amplitude * (top * (1.0 - v) + bottom * v)
            weight += amplitude
        return total / weight


def valley(col, row, cols):
    """Depth between 0 and 1 of a valley that winds down the map."""
    x = col / cols
    y = row / cols
    middle = 0.58 + 0.9 * (y - 0.1) * (y - 0.42) * (y - 0.7) * 4.0
    part = (x - middle) / 0.13
    return smooth(max(0.0, 1.0 - part * part)) if -1.0 < part < 1.0 else 0.0


def terrain_heights(cols, rows, seed):
    """Heights in metres; the sea in the south-west holds no data."""
    relief = Relief(seed, cols / 4.0, 5)
    grid = []
    for row in range(rows):
        line = []
        for col in range(cols):
            land = 0.55 * col / cols + 0.75 * (rows - row) / rows - 0.42
            ground = 1.75 * relief.at(col, row) - 0.70 + 0.55 * land
            height = 760.0 * (ground - 0.34 * valley(col, row, cols))
            line.append(NO_DATA if height < 0.0 else height)
        grid.append(line)
    return grid


def lake_heights(cols, rows, seed):
    """A ring of mountains round a lake; the lake holds no data."""
    relief = Relief(seed, cols / 5.0, 5)
    grid = []
    for row in range(rows):
        line = []
        for col in range(cols):
            x, y = 2.0 * col / cols - 1.05, 2.0 * row / rows - 0.93
            bowl = x * x * 0.9 + y * y * 1.2
            height = 396.0 + 900.0 * (bowl * 0.7 + 0.9 * relief.at(col, row) - 0.56)
            line.append(NO_DATA if height < 396.0 else height)
        grid.append(line)
    return grid


COLS, ROWS, CELL, WEST, SOUTH = 320, 240, 25, 436000, 5262000

ASC_HEAD = "ncols %d\nnrows %d\nxllcorner %d\nyllcorner %d\ncellsize %d\nNODATA_value %d\n"


def terrain_asc():
    rows = terrain_heights(COLS, ROWS, 1907)
    head = ASC_HEAD % (COLS, ROWS, WEST, SOUTH, CELL, NO_DATA)
    return head + "".join(" ".join("%.0f" % value for value in row) + "\n" for row in rows)


# each entry: lower height and its colour, upper height and its colour
TERRAIN_COLOURS = """\
0     58 112  64
60    96 150  74
60    96 150  74
160  172 190  98
160  172 190  98
300  222 204 134
300  222 204 134
450  190 148 100
450  190 148 100
620  148 108  84
620  148 108  84
1000 244 242 240
"""

LAKE_COLOURS = """\
390   64 120  72
520  128 166  84
520  128 166  84
700  210 200 128
700  210 200 128
950  176 132  96
950  176 132  96
1200 132 112 106
1200 132 112 106
2000 250 250 252
"""

TERRAIN_TAB = """\
!table
!version 300
!charset WindowsLatin1

Definition Table
  File "terrain.asc"
  Type "RASTER"
  (%(west)d,%(north)d) (0,0) Label "Pt 1",
  (%(east)d,%(north)d) (%(cols)d,0) Label "Pt 2",
  (%(east)d,%(south)d) (%(cols)d,%(rows)d) Label "Pt 3",
  (%(west)d,%(south)d) (0,%(rows)d) Label "Pt 4"
  CoordSys Earth Projection 8, 104, "m", 9, 0, 0.9996, 500000, 0
  Units "m"
"""


def terrain_tab():
    return TERRAIN_TAB % {
        "west": WEST, "east": WEST + COLS * CELL, "south": SOUTH, "north": SOUTH + ROWS * CELL,
        "cols": COLS, "rows": ROWS,
    }


LAKE_COLS, LAKE_ROWS = 256, 224

LAKE_HDR = """\
BYTEORDER      I
LAYOUT         BIL
NROWS          %d
NCOLS          %d
NBANDS         1
NBITS          32
BANDROWBYTES   %d
TOTALROWBYTES  %d
PIXELTYPE      FLOAT
ULXMAP         9.0125
ULYMAP         47.0875
XDIM           0.000625
YDIM           0.000625
NODATA         -9999
""" % (LAKE_ROWS, LAKE_COLS, LAKE_COLS * 4, LAKE_COLS * 4)


def lake_bil():
    """Little-endian singles; heights in steps of 1/8 m, which a single holds exactly."""
    rows = lake_heights(LAKE_COLS, LAKE_ROWS, 4711)
    return b"".join(
        struct.pack("<%df" % len(row), *(int(value * 8.0) / 8.0 for value in row)) for row in rows)


SAMPLES = {
    "levels.txt": lambda: LEVELS,
    "catalogue.json": catalogue,
    "setups.json": setups,
    "fm_band.csv": fm_band,
    "fm_next_day.csv": fm_next_day,
    "wifi_band.csv": wifi_band,
    "fm_cable.csv": lambda: FM_CABLE,
    "wifi_mask.csv": lambda: WIFI_MASK,
    "terrain.asc": terrain_asc,
    "terrain.clr": lambda: TERRAIN_COLOURS,
    "terrain.tab": terrain_tab,
    "terrain_bil.hdr": lambda: LAKE_HDR,
    "terrain_bil.bil": lake_bil,
    "terrain_bil.clr": lambda: LAKE_COLOURS,
}


def main(arguments):
    if arguments not in ([], ["--check"]):
        print(__doc__, file=sys.stderr)
        return 2
    differing = []
    for name, make in SAMPLES.items():
        content = make()
        if isinstance(content, str):
            content = content.encode("utf-8")
        file = HERE / name
        if not arguments:
            file.write_bytes(content)
        elif not file.is_file() or file.read_bytes() != content:
            differing.append(name)
    for name in differing:
        print("%s is not what generate.py makes" % name, file=sys.stderr)
    return 1 if differing else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
