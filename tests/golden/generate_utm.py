#!/usr/bin/env python3
"""Writes utm.csv, geographic positions of UTM positions, worked out with 50 digits, and zones.csv.

The formulas are evaluated one step after the other with decimal arithmetic and series of our own, so
that the file owes nothing to the library or to the C library's functions. Eastings and northings
are taken as the single-precision numbers that the library gets.

Columns of utm.csv: easting and northing in metres, zone, south flag, latitude in millionths of a degree (rounded
down), whether that rounding is steady (further than 1e-6 of a step from the next step), longitude in
degrees. Those of zones.csv: a longitude, on the border of a zone or one or two singles beside it, and its
zone. A sum and a product round to a double there; nothing else does.

    generate_utm.py          writes the files beside this script
    generate_utm.py --check  compares, exit status 1 where a file differs
"""

import math
import pathlib
import struct
import sys
from decimal import ROUND_FLOOR, Decimal, getcontext

getcontext().prec = 60
D = Decimal


def single(value):
    """The single-precision number next to a value, exactly."""
    return D(struct.unpack("f", struct.pack("f", value))[0])


def sine(x):
    term, total, n = x, x, 1
    while abs(term) > D("1e-55"):
        term = -term * x * x / ((n + 1) * (n + 2))
        total += term
        n += 2
    return total


def cosine(x):
    term, total, n = D(1), D(1), 0
    while abs(term) > D("1e-55"):
        term = -term * x * x / ((n + 1) * (n + 2))
        total += term
        n += 2
    return total


INV_K0 = D("1.0004001600640255")
A = D("6378137.0")
E = D("0.08181919083755347")
EP2 = D("0.0067394967414358955")
ONE_PLUS_EP2 = D("1.0067394967414358")


def geographic(easting, northing, zone, south):
    """Latitude in millionths of a degree, not rounded, and longitude in degrees."""
    meridian = (zone - 1) * D("6.0") - D("177.0")
    arc = northing - D("10001151.0") if south else northing * INV_K0
    mu = arc * D("1.570487611407373e-07")
    phi1 = (
        mu
        + D("0.0025188265840776275") * sine(2 * mu)
        + D("3.7009490347005646e-06") * sine(4 * mu)
        + D("4.7350339166475714e-09")
        * (D("1.5729166666666665") * sine(6 * mu) + D("0.0035978608664726") * sine(8 * mu))
    )
    sin1, cos1 = sine(phi1), cosine(phi1)
    tan1 = sin1 / cos1
    c = EP2 * cos1 ** 2
    t = tan1 ** 2
    w = 1 - (E * sin1) ** 2
    d = (easting - D("500000.0")) * INV_K0 * w.sqrt() * D("1.567855942887398e-07")
    q = INV_K0 * ONE_PLUS_EP2 * w * tan1
    p = (
        d ** 2 / 2
        + (d ** 4 / 24) * (D("-4.939344529327077") - 3 * t - 10 * c + 4 * c ** 2)
        + (d ** 6 / 720)
        * (D("59.30164682115815") + 90 * t + 298 * c + 45 * t ** 2 - 3 * c ** 2)
    )
    phi = phi1 - q * p
    series = (
        1
        - (1 + 2 * t + c) * d ** 2 / 6
        + (D("5.053915973931487") + 28 * t + 24 * t ** 2 - 2 * c - 3 * c ** 2) * d ** 4 / 120
    )
    longitude = meridian + D("57.29577951308232") * d * series / cos1
    return phi * D("57295779.513082325"), longitude


def positions():
    """Zones and hemispheres, ordinary places, and places so far out that every term counts."""
    for south in (0, 1):
        for northing in (0.0, 1.0, 123456.7, 2500000.0, 4649776.5, 5411932.5, 7000000.0, 9300000.0):
            for easting in (166021.4, 448251.8, 499999.97, 500000.0, 500000.03, 600123.25, 833978.6):
                yield easting, northing, 31, south
        for zone in (-3, 0, 1, 19, 32, 60, 61, 100):
            yield 612345.6, 3456789.0, zone, south
        for easting in (-2000000.0, -1000000.0, 0.0, 1000000.0, 1500000.0, 3000000.0, 6000000.0):
            for northing in (300000.0, 1500000.0, 3000000.0, 4500000.0, 6000000.0):
                yield easting, northing, 31, south
    yield 500000.0, 10000000.0, 31, 1
    yield 500000.0, 10001151.0, 31, 1
    yield 500000.0, -250000.0, 31, 0
    for easting, northing in NEAR_STEP:
        yield easting, northing, 31, 0


# Places so near to a step of the latitude that the last digits of a constant decide on which side
# of it they fall: each row tells the constant, and how little it may be off.
NEAR_STEP = (
    (500000.0, 866988.75),  # the term of eight times the angle, left out
    (500000.0, 3580223.5),  # the same
    (500000.0, 3963913.25),  # the same
    (500000.0, 4842705.0),  # its factor for six times the angle, by 5e-4 of it
    (500000.0, 7999211.0),  # the factor of both terms, by 1e-4
    (500000.0, 6091450.5),  # four times the angle, by 1e-6
    (500000.0, 4759279.0),  # twice the angle, by 1e-8
    (3393160.5, 8693393.0),  # 1 / k0, by 1e-9
    (3485937.25, 8962517.0),  # the length of the meridian, by 1e-9
    (3416814.0, 8583158.0),  # e, by 1e-9
    (2908620.5, 7909379.5),  # 1 / a, by 1e-8
    (-1116845.0, 2063731.0),  # 1 + e'^2, by 1e-8
    (-2264791.0, 3537763.0),  # e'^2, by 1e-6
    (-2330490.5, 8057248.0),  # the constant of the fourth power, by 1e-6
    (-2177576.25, 7409459.0),  # the constant of the sixth power, by 1e-6
    (430406.53125, 8755784.0),  # millionths of a degree in a radian, by 1e-10
)


def table():
    lines = ["easting,northing,zone,south,microdegrees,steady,longitude"]
    for easting, northing, zone, south in positions():
        east, north = single(easting), single(northing)
        micro, longitude = geographic(east, north, zone, south)
        step = micro.to_integral_value(ROUND_FLOOR)
        distance = min(micro - step, step + 1 - micro)
        steady = 1 if distance > D("1e-6") else 0
        lines.append(f"{east},{north},{zone},{south},{step},{steady},{longitude:.18f}")
    return "\n".join(lines) + "\n"


def beside(value):
    """The single next to a value, and two to either side, as ordered by their bits."""
    bits = struct.unpack("i", struct.pack("f", value))[0]
    for step in (-2, -1, 0, 1, 2):
        yield struct.unpack("f", struct.pack("i", bits + step))[0]


def zones():
    lines = ["longitude,zone"]
    for border in range(-198, 200, 6):
        for longitude in beside(float(border)) if border else (-1e-5, -1e-30, -1e-45, 0.0, 1e-45, 1e-5):
            zone = math.floor((longitude + 180.0) * 0.16666666666666666) + 1
            lines.append(f"{longitude!r},{zone}")
    return "\n".join(lines) + "\n"


def main():
    stale = False
    for name, text in (("utm.csv", table()), ("zones.csv", zones())):
        path = pathlib.Path(__file__).with_name(name)
        if sys.argv[1:] != ["--check"]:
            path.write_text(text, encoding="ascii")
        elif not path.exists() or path.read_text(encoding="ascii") != text:
            print(f"{path} is not what this generator writes", file=sys.stderr)
            stale = True
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main())
