#!/usr/bin/env python3
"""Writes the golden numbers of the unit conversions: what the formulas give, worked out apart from
the library.

Sums and products are IEEE doubles, as they are in the formulas; exponentials and logarithms are
taken with 40 digits and rounded once. Texts are rounded from the exact value of the double.

A C library may return the double next to the right one. Where that would turn a text (at a rounding
tie, or at the threshold of a prefix) the row holds both texts, the right one first. Numbers that a
logarithm or an exponential takes part in may be two places off, or as many as an ulp of a term makes
where terms nearly cancel each other, and others not at all: the column "ulps".

    generate.py           writes the files beside this script
    generate.py --check   says which of them differ from what would be written, and fails if any does
"""

import itertools
import math
import pathlib
import struct
import sys
from decimal import ROUND_HALF_EVEN, ROUND_HALF_UP, Context, Decimal, getcontext

getcontext().prec = 40
EVERY_DIGIT = Context(prec=800)  # no double has more

# ---------------------------------------------------------------- arithmetic

# How many places the exponentials and logarithms of a formula are off, in turn.
ERRORS = ((0, 0), (-1, -1), (-1, 1), (1, -1), (1, 1), (0, 1), (0, -1), (1, 0), (-1, 0))
errors = itertools.cycle(ERRORS[0])


def off(right):
    """The double nearest to a number, or one of those beside it."""
    error = next(errors)
    return math.nextafter(float(right), error * math.inf) if error else float(right)


def exp(x):
    return off(Decimal(x).exp())


def lg(x):
    return off(Decimal(x).log10())


def power_of_ten(x):
    return exp(x * 2.302585092994046)


def amplitude(db):
    return exp(db * 0.1151292546497023)


def power(db):
    return exp(db * 0.2302585092994046)


def single(x):
    """The nearest single-precision number; beyond the range infinity."""
    try:
        return struct.unpack("f", struct.pack("f", x))[0]
    except OverflowError:
        return math.copysign(math.inf, x)


def single_beside(x, step):
    """The single-precision number `step` places away from a positive one."""
    bits = struct.unpack("I", struct.pack("f", x))[0]
    return struct.unpack("f", struct.pack("I", bits + step))[0]


def rounded(value, decimals, rounding):
    return format(Decimal(value).quantize(Decimal(1).scaleb(-decimals), rounding, EVERY_DIGIT), "f")


def printf(value, decimals):
    return rounded(value, decimals, ROUND_HALF_EVEN)


def set_num(value, decimals):
    return rounded(value, decimals, ROUND_HALF_UP)


def results(function, *arguments):
    """What a function gives, and what it gives where exponentials and logarithms are an ulp off."""
    global errors
    found = []
    for pair in ERRORS:
        errors = itertools.cycle(pair)
        result = function(*arguments)
        if result not in found:
            found.append(result)
    errors = itertools.cycle(ERRORS[0])
    return found


def with_places(function, *arguments):
    """A number, and how many places it may be off: two, or more where an ulp of a term is more."""
    found = results(function, *arguments)
    return found[0], max(2, *(math.ceil(abs(number - found[0]) / math.ulp(found[0])) for number in found))


def beside(number, steps=1):
    """A double and those up to some places below and above it."""
    below, above = [number], [number]
    for _ in range(steps):
        below.append(math.nextafter(below[-1], -math.inf))
        above.append(math.nextafter(above[-1], math.inf))
    return below[:0:-1] + above


def crossing(is_above, near):
    """The least double about `near` for which a condition holds."""
    low, high = near - 1e-6, near + 1e-6
    assert is_above(high) and not is_above(low)
    while math.nextafter(low, high) != high:
        middle = low + (high - low) / 2
        low, high = (low, middle) if is_above(middle) else (middle, high)
    return high


def spread(first, last, step):
    return [round(first + i * step, 6) for i in range(int((last - first) / step) + 1)]


# ---------------------------------------------------------------- dBm to level, volt and watt texts

LEVELS = {"dBm": 0.0, "dBV": -13.0103, "dBmV": 46.9897, "dBuV": 106.9897}
VOLTS = ((3, "mV"), (6, "\u00b5V"), (9, "nV"), (12, "pV"), (15, "fV"))
WATTS = ((3, "mW"), (6, "\u00b5W"), (9, "nW"), (12, "pW"), (15, "fW"), (18, "aW"), (21, "zW"), (24, "yW"))


def level_text(unit, dbm):
    return set_num(dbm + LEVELS[unit], 1), unit


def volt_text(dbm):
    level = (dbm + 46.9897) * 0.05
    millivolts = power_of_ten(level)
    if millivolts < 10.0:
        for k, unit in VOLTS:
            x = power_of_ten(level + k)
            if x >= 10.0:
                return printf(x * 0.001, 2), unit
    volts = millivolts * 0.001
    if millivolts > 100000.0:
        volts *= 0.001
    return printf(volts, 2), "V"


def watt_text(dbm):
    level = (dbm - 30.0) * 0.1
    watts = power_of_ten(level)
    if watts < 0.01:
        for k, unit in WATTS:
            x = power_of_ten(level + k)
            if x >= 0.01:
                return printf(x, 2), unit
    if watts >= 1e6:
        watts *= 1e-6
    elif watts >= 1000.0:
        watts *= 0.001
    return printf(watts, 2), "W"


def letter_text(dbm):
    level = (dbm - 30.0) * 0.1
    watts = power_of_ten(level)
    if watts < 0.01:
        for k, letter in zip(range(3, 25, 3), "munpfazy"):
            x = power_of_ten(level + k)
            if x >= 0.01:
                return printf(x, 2) + " " + letter, ""
    if watts >= 1e6:
        return printf(watts * 1e-6, 2) + " M", ""
    if watts >= 1000.0:
        return printf(watts * 0.001, 2) + " k", ""
    return printf(watts, 2) + " ", ""


def volt_thresholds():
    """Levels at which the voltage reaches 100 V, 10 mV and so on, and at which its double does."""
    yield from beside(20.0 * 5 - 46.9897)
    yield from beside(crossing(lambda dbm: power_of_ten((dbm + 46.9897) * 0.05) > 100000.0, 53.0103))
    for k in (0, 3, 6, 9, 12, 15):
        level = 20.0 * (1 - k) - 46.9897
        yield from beside(level)
        yield from beside(crossing(lambda dbm, k=k: power_of_ten((dbm + 46.9897) * 0.05 + k) >= 10.0, level))


def watt_thresholds():
    """The same for 1 MW, 1 kW, 10 mW down to 0.01 yW."""
    steps = [(0, 1e6, 90.0), (0, 1000.0, 60.0)] + [(k, 0.01, 10.0 - 10.0 * k) for k in range(0, 25, 3)]
    for k, threshold, level in steps:
        yield from beside(level)
        reaches = lambda dbm: power_of_ten((dbm - 30.0) * 0.1 + k) >= threshold
        yield from beside(crossing(reaches, level))


def levels_file():
    yield "operation,unit,dBm,number,unit afterwards,or number,or unit afterwards"
    plain = spread(-173.9, 131.0, 6.13) + [0.0, 13.0103, -46.9897, -106.9897, 100.0]
    for unit in LEVELS:
        for dbm in plain:
            yield text_row(("level", unit, dbm), level_text, unit, dbm)
    for dbm in spread(-430.3, 130.0, 4.37) + list(volt_thresholds()):
        yield text_row(("level", "V", dbm), volt_text, dbm)
    for dbm in spread(-279.7, 130.0, 3.19) + list(watt_thresholds()):
        yield text_row(("level", "W", dbm), watt_text, dbm)
        yield text_row(("letter", "", dbm), letter_text, dbm)


# ---------------------------------------------------------------- dBm to field texts

ANTENNAS = ((100.0, 0.0), (1000.0, 0.0), (433.92, 2.15), (0.15, -40.0), (5800.0, 12.5), (18000.0, 35.0))
FIELD_LEVELS = {"dBuV/m": 107.0, "dBmV/m": 47.0, "dBV/m": -13.0, "dBW/m^2": -38.75999999999999, "dBA/m": -64.53}
LARGE = ((1e9, 1e-9, 1, "G"), (1e6, 1e-6, 1, "M"), (1000.0, 0.001, 2, "k"))
SMALL = ((1e-5, 1e3, "m"), (1e-8, 1e6, "u"), (1e-11, 1e9, "n"), (1e-14, 1e12, "p"),
         (1e-17, 1e15, "f"), (1e-20, 1e18, "a"), (1e-23, 1e21, "z"), (1e-26, 1e24, "y"))  # fmt: skip


def prefixed(unit, value):
    """Number and unit of a single-precision value."""
    magnitude = abs(value)
    if magnitude >= 0.01:
        for threshold, factor, decimals, letter in LARGE:
            if magnitude >= threshold:
                # A product of two singles is exact in double: this rounds it once, to single.
                return printf(single(value * single(factor)), decimals), letter + unit
        return printf(value, 2), unit
    for threshold, factor, letter in SMALL:
        if magnitude >= threshold:
            return printf(single(value * factor), 2), letter + unit
    return "", ""


def field_value(unit, dbm, correction):
    if unit == "V/m":
        return amplitude(dbm - 13.0 + correction)
    if unit == "A/m":
        return amplitude(dbm + 107.0 + correction) * 2.652519893899204e-09
    density = power(dbm - 13.0 + correction)
    return density * (2.6525823848649226e-07 if unit == "W/cm^2" else 0.0026525823848649226)


def correction(frequency, gain):
    return 20.0 * lg(frequency) + (-29.8 - gain)


def field_text(unit, dbm, frequency, gain):
    k = correction(frequency, gain)
    if unit in FIELD_LEVELS:
        return set_num(dbm + FIELD_LEVELS[unit] + k, 2), unit
    if unit == "dBm/m^2":
        return set_num(10.0 * lg(field_value("W/m^2", dbm, k)) + 30.0, 2), unit
    return prefixed(unit, single(field_value(unit, dbm, k)))


def level_of_field(unit, value, frequency, gain):
    """About the level whose field is `value`."""
    slope = 20.0 if unit in ("V/m", "A/m") else 10.0
    return round(slope * math.log10(value / field_value(unit, 0.0, correction(frequency, gain))), 9)


THRESHOLDS = (*(large[0] for large in LARGE), 0.01, *(small[0] for small in SMALL))


def fields_file():
    yield "unit,dBm,MHz,dBi,number,unit afterwards,or number,or unit afterwards"
    linear = ("V/m", "W/m^2", "A/m", "W/cm^2")
    for unit in (*FIELD_LEVELS, "dBm/m^2", *linear):
        for frequency, gain in ANTENNAS:
            for dbm in spread(-170.3, 71.0, 12.7):
                yield text_row((unit, dbm, frequency, gain), field_text, unit, dbm, frequency, gain)
    for unit in linear:
        for threshold in THRESHOLDS:
            nominal = level_of_field(unit, threshold, 100.0, 0.0)
            k = correction(100.0, 0.0)
            reaches = lambda dbm: single(field_value(unit, dbm, k)) >= threshold
            for dbm in beside(nominal) + beside(crossing(reaches, nominal)):
                yield text_row((unit, dbm, 100.0, 0.0), field_text, unit, dbm, 100.0, 0.0)


def prefixes_file():
    yield "value,number,unit afterwards"
    values = []
    for exponent in range(-30, 39, 2):
        values += [float(f"{digits}e{exponent}") for digits in ("1", "1.005", "2.345", "3.375", "9.995", "-7.125")]
    for tie in (0.125, 0.375, 0.625, 1.125, 62.5 * 1024, 1000.005, 999.995, 0.045):
        values += [tie, -tie]
    values = [single(value) for value in values if abs(value) < 3.4e38]
    for threshold in THRESHOLDS:
        nearest = single(threshold)
        for step in (-2, -1, 0, 1, 2):
            values += [single_beside(nearest, step), -single_beside(nearest, step)]
    for value in values:
        yield row(value, *prefixed("V/m", value))


# ---------------------------------------------------------------- units to dBm

TO_MILLIVOLTS = {"V": 1000.0, "mV": 1.0, "\u00b5V": 0.001, "nV": 1e-06, "pV": 1e-09}
TO_WATTS = {"W": 1.0, "mW": 0.001, "\u00b5W": 1e-06, "nW": 1e-09, "pW": 1e-12}
TO_BASE = {"": 1.0, "m": 0.001, "u": 1e-06, "n": 1e-09, "p": 1e-12}
FIELD_BACK = {"dBuV/m": -77.2, "dBmV/m": -17.2, "dBV/m": 42.8, "dBm/m^2": 38.56331118741759,
              "dBW/m^2": 68.55999999999999, "dBA/m": 94.33000000000001}  # fmt: skip


def cut(value, digits):
    """Some decimals, cut toward zero."""
    for _ in range(digits):
        value *= 10.0
    value = float(max(-2147483648, min(2147483647, int(value))))
    for _ in range(digits):
        value *= 0.1
    return value


PINNED = {"dBV": 87.0, "dBmV": 147.0, "dBuV": 207.0}  # the rounded images of 100 dBm


def level_back(unit, value):
    if unit == "dBm":
        return value
    return 100.0 if value == PINNED[unit] else cut(value - LEVELS[unit], 3)


def volt_back(unit, value):
    return cut(20.0 * lg(value * TO_MILLIVOLTS[unit]) - 46.9897, 3)


def watt_back(unit, value):
    return cut(10.0 * lg(value * TO_WATTS[unit]) + 30.0, 3)


def field_back(unit, value, frequency, gain):
    d = 20.0 * lg(frequency)
    if unit in FIELD_BACK:
        return value + FIELD_BACK[unit] + gain - d
    if unit == "A/m":
        return 20.0 * lg(value * 377000000.0) + (gain - 77.2 - d)
    antenna = gain + 42.8 - d
    if unit == "w/cm^2":
        return 10.0 * lg(value * 3769911.1843077512) + antenna
    if unit.endswith("V/m"):
        return 20.0 * lg(value * TO_BASE[unit[:-3]]) + antenna
    return 10.0 * lg(376.99111843077515 * (value * TO_BASE[unit[:-5]])) + antenna


def backward_file():
    yield "unit,value,MHz,dBi,dBm,ulps"
    for unit in LEVELS:
        values = spread(-200.7, 231.0, 9.371) + [86.0, 147.5, 206.9]
        for value in values + beside(PINNED.get(unit, 100.0)):
            yield row(unit, value, 0.0, 0.0, level_back(unit, value), 0)
    magnitudes = [float(f"{digits}e{exponent}") for exponent in range(-9, 10, 2) for digits in ("1", "3.7", "7.071")]
    for units, back in ((TO_MILLIVOLTS, volt_back), (TO_WATTS, watt_back)):
        for unit in units:
            for value in magnitudes:
                # Cut to three decimals: where the last digit of the logarithm would turn them, no row.
                levels = results(back, unit, value)
                if len(levels) == 1:
                    yield row(unit, value, 0.0, 0.0, levels[0], 0)
    for unit in FIELD_BACK:
        for frequency, gain in ANTENNAS:
            for value in spread(-180.3, 160.0, 42.7):
                yield row(unit, value, frequency, gain, *with_places(field_back, unit, value, frequency, gain))
    linear = [prefix + base for base in ("V/m", "W/m^2") for prefix in TO_BASE] + ["A/m", "w/cm^2"]
    for unit in linear:
        for frequency, gain in ANTENNAS:
            for value in magnitudes[::4]:
                yield row(unit, value, frequency, gain, *with_places(field_back, unit, value, frequency, gain))


# ---------------------------------------------------------------- numeric scales

SCALE_SUMS = {1: -13.0103, 2: 46.9897, 3: 106.9897}
SCALE_FIELD_SUMS = {6: 107.0, 7: 47.0, 8: -13.0, 12: -38.75999999999999, 14: -64.53}
DENSITY = {10: (0.0026525823848649226, 376.99111843077515), 15: (2.6525823848649226e-07, 3769911.1843077512)}


def single_correction(frequency, gain):
    return single(correction(frequency, gain))


SCALE_EXACT = {0, *SCALE_SUMS, *SCALE_FIELD_SUMS}  # and 11 to dBm


def scale_forward(scale, dbm, k):
    if scale == 0:
        return dbm
    if scale in SCALE_SUMS:
        return dbm + SCALE_SUMS[scale]
    if scale in SCALE_FIELD_SUMS:
        return dbm + SCALE_FIELD_SUMS[scale] + k
    if scale == 11:
        return 10.0 * lg(power(dbm - 13.0 + k) * 0.0026525823848649226) + 30.0
    if scale == 4:
        return amplitude(dbm + 46.9897) * 0.001
    if scale == 5:
        return power(dbm - 30.0)
    if scale == 9:
        return amplitude(dbm - 13.0 + k)
    if scale == 13:
        return amplitude(dbm + 107.0 + k) * 2.652519893899204e-09
    return power(dbm - 13.0 + k) * DENSITY[scale][0]


def scale_backward(scale, value, k):
    if scale == 0:
        return value
    if scale in SCALE_SUMS:
        return value - SCALE_SUMS[scale]
    if scale in SCALE_FIELD_SUMS:
        return value - SCALE_FIELD_SUMS[scale] - k
    if scale == 11:
        return value + 8.763311187417589 - k
    if scale in (4, 5):
        return 20.0 * lg(value * 1000.0) - 46.9897
    if scale == 13:
        return 20.0 * lg(value * 377000000.0) - 107.0 - k
    return 10.0 * lg(value * DENSITY[scale][1]) + 13.0 - k


def scale_result(function, exact, scale, value, k):
    return (function(scale, value, k), 0) if exact else with_places(function, scale, value, k)


def scales_file():
    yield "direction,scale,value,MHz,dBi,result,ulps"
    for frequency, gain in ANTENNAS:
        (k,) = results(single_correction, frequency, gain)
        for scale in range(16):
            for dbm in spread(-121.7, 47.0, 27.9):
                result = scale_result(scale_forward, scale in SCALE_EXACT, scale, dbm, k)
                yield row("from dBm", scale, dbm, frequency, gain, *result)
            if scale == 9:
                continue
            linear = scale in (4, 5, 10, 13, 15)
            for value in (3.7e-9, 0.000271, 1.0, 52.5) if linear else spread(-121.7, 147.0, 44.3):
                result = scale_result(scale_backward, scale in SCALE_EXACT | {11}, scale, value, k)
                yield row("to dBm", scale, value, frequency, gain, *result)


# ---------------------------------------------------------------- files


def row(*cells):
    """A line of comma-separated cells, texts in quotes."""
    return ",".join(f'"{cell}"' if isinstance(cell, str) else repr(cell) for cell in cells)


def text_row(cells, function, *arguments):
    """Arguments, number and unit, and another number and unit where the C library may turn them."""
    found = results(function, *arguments)
    assert len(found) < 3
    return row(*cells, *(cell for result in found for cell in result))


FILES = {
    "levels.csv": levels_file,
    "fields.csv": fields_file,
    "prefixes.csv": prefixes_file,
    "backward.csv": backward_file,
    "scales.csv": scales_file,
}


def main(files):
    check = sys.argv[1:] == ["--check"]
    stale = []
    for name, lines in files.items():
        path = pathlib.Path(__file__).with_name(name)
        text = "".join(line + "\n" for line in lines())
        if not check:
            path.write_text(text, encoding="utf-8")
        elif not path.exists() or path.read_text(encoding="utf-8") != text:
            stale.append(name)
    for name in stale:
        print(f"{name} is not what {pathlib.Path(sys.argv[0]).name} writes", file=sys.stderr)
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main(FILES))
