"""Levels, their texts and units, against the command and the formulas."""
import tracemalloc
import unittest
import warnings
from concurrent.futures import ThreadPoolExecutor

import numpy as np
from support import answer, refusal

import rfutils

LEVELS = [-130.0, -97.3, -30.0, -0.0, 0.5, 19.999, 60.0]
# name, options of the command, the same of Python
ANTENNAS = [("", [], {}), ("100 MHz", ["--center", "100MHz"], {"center_hz": 100e6}),
            ("1 GHz, 2 dBi", ["--center", "1GHz", "--gain", "2"], {"center_hz": 1e9, "gain": 2})]


class Conversions(unittest.TestCase):
    def test_levels_are_those_of_the_command_in_every_unit(self):
        for unit in rfutils.units():
            if unit.from_dbm != "name":
                continue
            for name, options, arguments in ANTENNAS[1:] if unit.antenna else ANTENNAS[:1]:
                with self.subTest(unit=unit.name, antenna=name), warnings.catch_warnings():
                    warnings.simplefilter("ignore", rfutils.Note)
                    rows = answer("convert", *LEVELS, "--to", unit.name, *options)
                    own = rfutils.convert(LEVELS, unit.name, **arguments)
                    self.assertEqual(own.tolist(), [row["value"] for row in rows])
                    texts = rfutils.text(LEVELS, unit.name, **arguments)
                    self.assertEqual(texts.tolist(), [row["text"] or "" for row in rows])

    def test_values_are_read_as_the_command_reads_them(self):
        for unit in rfutils.units():
            if not unit.to_dbm:
                continue
            arguments = {"center_hz": 100e6} if unit.antenna else {}
            options = ["--center", "100MHz"] if unit.antenna else []
            with self.subTest(unit=unit.name):
                entry = "2.5 " + unit.name
                [row] = answer("convert", entry, "--to", "dBm", *options)
                self.assertEqual(rfutils.level(entry, **arguments), row["dBm"])
                self.assertEqual(rfutils.level(2.5, unit.name, **arguments), row["dBm"])
                self.assertEqual(rfutils.convert(2.5, "dBm", unit=unit.name, **arguments), row["dBm"])

    def test_arrays_of_any_shape_give_what_their_numbers_give(self):
        block = np.random.default_rng(7).uniform(-120, 20, (6, 5, 8))
        shapes = {"whole": block, "every other, backwards": block[::2, ::-1, 1::3], "turned": block.T,
                  "one number": block[1, 2, 3], "none": block[:0], "row": block[0, 0],
                  "Fortran": np.asfortranarray(block), "repeated": np.broadcast_to(block[0, 0], (3, 8)),
                  "big endian": block.astype(">f8"), "not aligned": np.zeros(9, "u1,f8")["f1"]}
        for name, values in shapes.items():
            with self.subTest(name):
                own = rfutils.convert(values, "V/m", center_hz=100e6)
                expected = [rfutils.convert(float(value), "V/m", center_hz=100e6) for value in np.ravel(values)]
                self.assertEqual(np.shape(own), np.shape(values))
                self.assertEqual(np.ravel(own).tolist(), expected)

    def test_singles_integers_and_lists_count_as_their_doubles(self):
        singles = np.float32([-97.3, 1.5])
        self.assertEqual(rfutils.convert(singles, "V").tolist(), rfutils.convert(singles.astype(float), "V").tolist())
        self.assertEqual(rfutils.convert(np.int16([-30]), "dBuV").tolist(), [rfutils.convert(-30.0, "dBuV")])
        self.assertEqual(rfutils.convert([[-30]], "dBuV").tolist(), [[rfutils.convert(-30.0, "dBuV")]])

    def test_what_was_not_measured_stays_so(self):
        for unit in ("dBm", "dBuV"):
            own = rfutils.convert([np.nan, 1.0], "V", unit=unit)
            self.assertTrue(np.isnan(own[0]) and own[1] > 0)
        own = rfutils.convert(np.ma.array([5.0, -30.0], mask=[True, False]), "dBuV")
        self.assertEqual((own.mask.tolist(), own[1]), ([True, False], rfutils.convert(-30, "dBuV")))

    def test_each_point_may_have_a_frequency_of_its_own(self):
        frequencies = np.array([88e6, 100e6, 2.4e9])
        own = rfutils.convert(np.full((2, 3), -30.0), "dBuV/m", center_hz=frequencies)
        for column, frequency in enumerate(frequencies):
            self.assertEqual(own[:, column].tolist(), [rfutils.convert(-30.0, "dBuV/m", center_hz=frequency)] * 2)

    def test_nothing_is_copied_on_the_way_in(self):
        values = np.broadcast_to(np.float64(-30.0), (4, 1000000))[:, ::2]  # 16 MB of one number
        tracemalloc.start()
        self.addCleanup(tracemalloc.stop)
        before = tracemalloc.get_traced_memory()[1]
        own = rfutils.convert(values, "dBuV")
        self.assertLess(tracemalloc.get_traced_memory()[1] - before, own.nbytes * 1.1)

    def test_threads_convert_at_once(self):
        values = np.linspace(-120, 20, 20000)
        expected = rfutils.convert(values, "W").tolist()
        with ThreadPoolExecutor(4) as pool:
            for own in pool.map(lambda _: rfutils.convert(values, "W").tolist(), range(16)):
                self.assertEqual(own, expected)

    def test_refusals_are_those_of_the_command(self):
        cases = [(["convert", "-30", "--to", "dbuv"], lambda: rfutils.convert(-30, "dbuv")),
                 (["convert", "-30", "--to", "mV"], lambda: rfutils.text(-30, "mV")),
                 (["convert", "-30", "--to", "dBW"], lambda: rfutils.convert(-30, "dBW")),
                 (["convert", "0V", "--to", "dBm"], lambda: rfutils.convert([1.0, 0.0], "dBm", unit="V")),
                 (["convert", "abc", "--to", "dBm"], lambda: rfutils.level("abc")),
                 (["convert", "1,5", "--to", "dBm"], lambda: rfutils.level("1,5"))]
        for arguments, call in cases:
            with self.subTest(arguments), self.assertRaises(ValueError) as caught:
                call()
            self.assertEqual(str(caught.exception), refusal(*arguments))
        for call in (lambda: rfutils.convert(-30, "V/m"), lambda: rfutils.convert(-30, "V/m", center_hz=0.0),
                     lambda: rfutils.level(1, "W/m^2"), lambda: rfutils.to_scale(1, 16), lambda: rfutils.from_scale(1, 9)):
            self.assertRaises(ValueError, call)
        self.assertRaises(TypeError, rfutils.convert, ["-30"], "V")
        self.assertRaises(TypeError, rfutils.convert, [1j], "V")

    def test_a_text_without_its_prefix_is_noted_once(self):
        with self.assertWarns(rfutils.Note) as caught:
            self.assertEqual(rfutils.text([60.0, 70.0], "W").tolist(), ["1.00 W", "10.00 W"])
        self.assertEqual(caught.filename, __file__)
        self.assertIn('"1.00 W" means 1.00 kW', str(caught.warning))


class Texts(unittest.TestCase):
    def test_units_are_those_of_the_command(self):
        rows = answer("units")
        self.assertEqual([tuple(unit) for unit in rfutils.units()], [tuple(row.values()) for row in rows])

    def test_scales(self):
        for scale in range(16):
            own = rfutils.to_scale([-30.0, 1.5], scale, center_hz=1e9)
            rows = answer("scale", scale, "-30", "1.5", "--center", "1GHz")
            self.assertEqual(own.tolist(), [row["value"] for row in rows])
            if scale != 9:
                [row] = answer("scale", scale, "1.5", "--to-dbm", "--center", "1GHz")
                self.assertEqual(rfutils.from_scale(1.5, scale, center_hz=1e9), row["value"])

    def test_frequencies(self):
        for hertz in (88.1e6, 2.4e9, 100e3, 249, -2.5e6, 0, 1e3, 1e9):
            [row] = answer("freq", f"{hertz}Hz")
            self.assertEqual(rfutils.frequency_text(hertz), row["text"])
            [row] = answer("width", f"{hertz}Hz")
            self.assertEqual(rfutils.width_text(hertz), row["text"])
        self.assertEqual(rfutils.frequency_hz("2.4G"), 2.4e9)
        self.assertRaises(ValueError, rfutils.frequency_hz, "1m")

    def test_frequencies_of_arrays_give_what_their_numbers_give(self):
        block = np.array([[88.1e6, 2.4e9, 249], [-2.5e6, 0, 1e3]])
        for convert in (rfutils.frequency_text, rfutils.width_text):
            for values in (block, block[:, ::-1].T, block[:0], np.array([88, 249]), np.float32([1e6, 2e9])):
                own = convert(values)
                self.assertEqual(own.shape, values.shape)
                self.assertEqual(own.ravel().tolist(), [convert(float(value)) for value in values.ravel()])
            self.assertEqual(convert([1e6, 2e9]).tolist(), [convert(1e6), convert(2e9)])
            for one in (88, np.float64(88), np.array(88.0)):
                self.assertIsInstance(convert(one), str)

    def test_what_is_no_number_is_refused_by_name(self):
        for call, problem in [
                (lambda: rfutils.from_dms("47\xb0 30' 0\""),
                 "degrees, minutes and seconds are numbers, not '47\xb0 30\\' 0\"'"),
                (lambda: rfutils.from_dms(47, [30, 0]), "degrees, minutes and seconds are numbers, not list"),
                (lambda: rfutils.from_dms(47, seconds=None), "degrees, minutes and seconds are numbers, not NoneType"),
                (lambda: rfutils.to_dms("47.5"), "degrees are a number, not '47.5'"),
                (lambda: rfutils.to_dms(np.array([47.5, 1])), "degrees are a number, not ndarray"),
                (lambda: rfutils.frequency_text("88.1MHz"),
                 "frequencies are numbers of Hz, not <U7; rfutils.frequency_hz() reads texts"),
                (lambda: rfutils.width_text([None]),
                 "frequencies are numbers of Hz, not object; rfutils.frequency_hz() reads texts"),
                (lambda: rfutils.frequency_hz(88.1e6), "a frequency to read is a text such as '88.1MHz', not float"),
                (lambda: rfutils.range_text(2, "-10", 20), "limits are numbers, not '-10'"),
                (lambda: rfutils.frequency_range_text(9e3, None), "limits are numbers, not NoneType")]:
            with self.subTest(problem), self.assertRaises(TypeError) as caught:
                call()
            self.assertEqual(str(caught.exception), problem)

    def test_ranges(self):
        for code in range(1, 24):
            row = answer("range", "--type", code, "--min", -10, "--max", 20, "--center", "100MHz", "--gain", 1)
            with warnings.catch_warnings():
                warnings.simplefilter("ignore", rfutils.Note)
                self.assertEqual(rfutils.range_text(code, -10, 20, center_hz=100e6, gain=1), row["text"])
            row = answer("range", "--type", code, "--min", -10, "--max", 20, "--integer")
            self.assertEqual(rfutils.range_text(code, -10, 20, whole=True), row["text"])
        row = answer("range", "--type", 0, "--min", 0.009, "--max", 6000)
        self.assertEqual(rfutils.frequency_range_text(9e3, 6e9), row["text"])
        for call in (lambda: rfutils.range_text(0, 1, 2), lambda: rfutils.range_text(2, 3, 2),
                     lambda: rfutils.range_text(16, 1, 2)):
            self.assertRaises(ValueError, call)

    def test_angles(self):
        for degrees in (12.5, -33.8688, -0.5, 45.999999, 0.0):
            [row] = answer("dms", degrees)
            self.assertEqual(list(rfutils.to_dms(degrees)), [row[name] for name in ("sign", "degrees", "minutes", "seconds")])
        self.assertEqual(rfutils.from_dms(33, 52, 7.68, sign=-1), answer("dd", -33, 52, 7.68)["degrees"])
        self.assertRaises(ValueError, rfutils.from_dms, 1, 60)


if __name__ == "__main__":
    unittest.main()
