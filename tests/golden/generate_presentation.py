#!/usr/bin/env python3
"""Writes the golden texts of frequencies and widths, and the golden angles.

Each step is exact: products are rounded once to a double, as the formulas have them, a fused
multiply-add is worked out with fractions and rounded once, and texts are rounded from the exact value
of the double. No logarithm takes part, so nothing may differ.

    generate_presentation.py           writes the files beside this script
    generate_presentation.py --check   says which of them differ, and fails if any does
"""

import math
import random
import sys
from decimal import ROUND_HALF_UP, Context, Decimal
from fractions import Fraction

from generate import beside, main, printf, row, spread

SIX_DIGITS = Context(prec=6, rounding=ROUND_HALF_UP)


def whole(value):
    """Cut toward zero to 32 bits."""
    return max(-2147483648, min(2147483647, math.trunc(value)))


# ---------------------------------------------------------------- frequencies and widths, in MHz


def frequency_text(mhz):
    magnitude = abs(mhz)
    if magnitude > 1000.0:
        return printf(mhz * 0.001, 9) + " GHz"
    if magnitude > 1.0:
        return printf(mhz, 6) + " MHz"
    if magnitude > 0.001:
        return printf(mhz * 1000.0, 3) + " kHz"
    return f"{whole(mhz * 1000000.0)} Hz"


def shortest(value):
    """At most six digits, no zeros at the end, with an exponent below 1e-4 and from 1e6 on."""
    rounded = SIX_DIGITS.create_decimal(Decimal(value))
    sign = "-" if rounded < 0 else ""
    digits = "".join(map(str, rounded.as_tuple().digits)).rstrip("0")
    exponent = rounded.adjusted()
    if not digits:
        return "0"
    if exponent < -4 or exponent >= 6:
        fraction = "." + digits[1:] if len(digits) > 1 else ""
        return f"{sign}{digits[0]}{fraction}e{'-' if exponent < 0 else '+'}{abs(exponent):02d}"
    if exponent < 0:
        return f"{sign}0.{'0' * (-exponent - 1)}{digits}"
    digits = digits.ljust(exponent + 1, "0")
    fraction = "." + digits[exponent + 1 :] if len(digits) > exponent + 1 else ""
    return sign + digits[: exponent + 1] + fraction


def width_text(mhz):
    if mhz > 1000.0:
        return shortest(mhz * 0.001) + "GHz"
    if mhz > 1.0:
        return shortest(mhz) + "MHz"
    if mhz > 0.0001:
        return shortest(mhz * 1000.0) + "kHz"
    return shortest(mhz * 1000000.0) + "Hz"


def frequencies():
    for threshold in (1000.0, 1.0, 0.001):
        for sign in (1.0, -1.0):
            yield from beside(sign * threshold, 3)
    for exponent in range(-9, 10):
        for digits in ("1", "1.005", "2.345", "3.14159265358979", "9.9999995", "-7.125"):
            yield float(f"{digits}e{exponent}")
    for hertz in (0, 1, 2, 3, 7, 19, 333, 999, 1000):  # the last ones before and behind a cut
        yield from beside(hertz * 1e-6) if hertz else [0.0]
    for tie in (2**-7, 3 * 2**-7, 1.0000005, 1 + 2**-20, 1 + 3 * 2**-20, 0.0015 + 2**-20, 2000 + 2**-20):
        yield from (tie, -tie)
    yield from spread(0.009, 6000.0, 187.3)
    yield from (1e300, -1e300, 1e-300, 5e-324, 2147.483648e6, -2147.483649e-6)


def widths():
    for threshold in (1000.0, 1.0, 0.0001):
        for sign in (1.0, -1.0):
            yield from beside(sign * threshold, 3)
    for exponent in range(-9, 10):
        for digits in ("1", "1.000005", "2.3456789", "3.14159265358979", "9.999995", "9.9999951", "-7.125"):
            yield float(f"{digits}e{exponent}")
    for tie in (100000.5, 100001.5, 1.00000050, 12.34375, 12.345652, 1234.5625, 2.5 + 2**-17, 65.5 + 2**-14):
        yield from (tie, -tie, tie * 1000.0)
    yield from spread(0.05, 1500.0, 61.7)
    yield from (0.0, 5e-324, 1e300, -1e300)


def frequencies_file():
    yield "MHz,text"
    for mhz in frequencies():
        yield row(mhz, frequency_text(mhz))


def widths_file():
    yield "MHz,text"
    for mhz in widths():
        yield row(mhz, width_text(mhz))


# ---------------------------------------------------------------- angles

SIXTIETH = Fraction(1 / 60)
PER_HOUR = Fraction(1 / 3600)


def parts(angle):
    """Sign, degrees, minutes and seconds."""
    sign, magnitude = (1, angle) if angle >= 0 else (-1, -angle)
    degrees = float(whole(magnitude))
    minutes = float(whole((magnitude - degrees) * 60.0))
    rest = float(Fraction(magnitude - degrees) - Fraction(minutes) * SIXTIETH)
    return sign, degrees, minutes, float(whole(rest * 3600.0))


def angle(sign, degrees, minutes, seconds):
    total = float(Fraction(degrees) + Fraction(minutes) * SIXTIETH)
    total = float(Fraction(total) + Fraction(seconds) * PER_HOUR)
    return float(sign) * total


def places():
    """Whole seconds, among them those on which degrees and minutes begin."""
    chosen = random.Random(20241121)
    for degrees in (0, 1, 33, 45, 90, 151, 179, 180, 359):
        yield from ((degrees, 0, 0), (degrees, 0, 1), (degrees, 59, 59), (degrees, 30, 0), (degrees, 1, 0))
    for _ in range(60):
        yield chosen.randrange(360), chosen.randrange(60), chosen.randrange(60)


def parts_file():
    yield "angle,sign,degrees,minutes,seconds"
    for degrees, minutes, seconds in places():
        exact = float(Fraction(degrees) + Fraction(minutes, 60) + Fraction(seconds, 3600))
        for value in beside(exact) if exact else [0.0]:
            yield row(value, *parts(value))
            yield row(-value, *parts(-value))
    for value in spread(-181.3, 360.0, 7.3331) + [12.5, 151.2093, 45.999999, -33.8688, 1e-9, 5e-324, 1e300, -1e300]:
        yield row(value, *parts(value))
    for value in beside(2147483647.0, 2) + beside(2147483648.0):
        yield row(value, *parts(value))


def fused_places():
    """Places of which the last digit shows that the products are not rounded on their own."""
    chosen = random.Random(20241122)
    found = 0
    while found < 40:
        place = chosen.randrange(4), chosen.uniform(0, 60), chosen.uniform(0, 60)
        degrees, minutes, seconds = place
        in_minutes = degrees + minutes * (1 / 60)
        if angle(1, *place) not in (
            in_minutes + seconds * (1 / 3600),
            float(Fraction(in_minutes) + Fraction(seconds) * PER_HOUR),
            float(Fraction(degrees) + Fraction(minutes) * SIXTIETH) + seconds * (1 / 3600),
        ):
            found += 1
            yield place


def angles_file():
    yield "sign,degrees,minutes,seconds,angle"
    for place in fused_places():
        yield row(1, *place, angle(1, *place))
    for degrees, minutes, seconds in places():
        for sign in (1, -1):
            yield row(sign, degrees, minutes, seconds, angle(sign, degrees, minutes, seconds))
    for sign in (1, -1, 0, 2, -32768, 32767):
        for degrees, minutes, seconds in ((33, 52, 7.68), (0.5, 59.999, 59.9999), (1e9, 1e-9, 0.1), (12, -30, -0.5)):
            yield row(sign, degrees, minutes, seconds, angle(sign, degrees, minutes, seconds))


if __name__ == "__main__":
    sys.exit(
        main(
            {
                "frequencies.csv": frequencies_file,
                "widths.csv": widths_file,
                "parts.csv": parts_file,
                "angles.csv": angles_file,
            }
        )
    )
