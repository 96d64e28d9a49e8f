"""Recordings against the command, and what notebooks do with them."""
import csv
import datetime
import gzip
import os
import pickle
import tempfile
import unittest
import warnings
from concurrent.futures import ThreadPoolExecutor

import numpy as np
from support import InSamples, answer, refusal, sample

import rfutils
from rfutils import Recording

PEAKS = {"frequency_hz": "frequencyMHz", "width_hz": "widthMHz", "maximum": "maximum", "average": "average",
         "floor": "floor", "above": "above", "present": "present", "first": "first", "last": "last"}
MORE = {"power_mean": "powerMean", "median": "median", "deviation_db": "deviationDb", "maximum_sweep": "maximumSweep",
        "maximum_time": "maximumTime"}
POINTS = {"point": "point", "frequency_hz": "frequencyMHz", "count": "count", "average": "average", "maximum": "maximum",
          "minimum": "minimum"}
CHANNELS = {"from_hz": "fromMHz", "to_hz": "toMHz", "samples": "samples", "occupied": "occupied",
            "occupancy": "occupancy", "low": "low", "high": "high"}
BAND = {"from_hz": "fromMHz", "to_hz": "toMHz", "channels": "channels", "samples": "samples", "fbo": "fbo", "sro": "sro",
        "threshold": "threshold"}
POWER = {"from_hz": "fromMHz", "to_hz": "toMHz", "power": "power", "occupied_from_hz": "occupiedFromMHz",
         "occupied_to_hz": "occupiedToMHz"}


class Sweeps(InSamples):
    def test_levels_times_and_frequencies_are_those_of_the_file(self):
        recording = Recording("fm_band.csv")
        sweeps = {}
        with open("fm_band.csv", encoding="ascii") as file:
            for row in csv.reader(file):
                low, high, step = map(float, row[2:5])
                levels = sweeps.setdefault(f"{row[0]}T{row[1].strip()}", {})
                for i, level in enumerate(row[6:]):
                    if low + i * step < high:  # the last level of a line may be repeated
                        levels[low + i * step] = float(level) if np.isfinite(float(level)) else np.nan
        self.assertEqual([str(time)[:19] for time in recording.times], list(sweeps))
        frequencies = recording.frequencies.tolist()
        self.assertEqual(len(frequencies), 512)
        for own, levels in zip(recording.levels, sweeps.values()):
            for frequency, level in zip(frequencies, own.tolist()):
                expected = levels.get(frequency, np.nan)
                self.assertTrue(level == expected or level != level and expected != expected)

    def test_chunks_make_up_the_recording(self):
        recording = Recording("fm_band.csv")
        for sweeps in (1, 7, 240, 1000):
            chunks = list(recording.chunks(sweeps))
            self.assertEqual(len(chunks), -(-240 // sweeps))
            np.testing.assert_array_equal(np.concatenate([chunk.levels for chunk in chunks]), recording.levels)
            np.testing.assert_array_equal(np.concatenate([chunk.times for chunk in chunks]), recording.times)
        singles = recording.read(np.float32)
        self.assertEqual(singles.levels.dtype, np.float32)
        np.testing.assert_array_equal(singles.levels, recording.levels.astype(np.float32))
        self.assertRaises(ValueError, lambda: next(recording.chunks(0)))
        self.assertRaises(TypeError, lambda: next(recording.chunks(1, int)))

    def test_windows_are_those_of_the_command(self):
        window = Recording("fm_band.csv", band=[(92e6, 93e6), (98e6, 98.5e6)], start="21:20",
                           stop=datetime.datetime(2024, 5, 4, 21, 30), every=3)
        facts = answer("trace", "fm_band.csv", "--band", "92M:93M", "--band", "98M:98.5M", "--from", "21:20", "--to",
                       "2024-05-04 21:30", "--every", 3)
        self.assertEqual(window.levels.shape, (facts["sweeps"], facts["points"]))
        self.assertEqual(window.frequencies[0] / 1e6, facts["fromMHz"])
        self.assertEqual([str(time)[:19].replace("T", " ") for time in window.times[[0, -1]]],
                         [facts["firstTime"], facts["lastTime"]])
        last = Recording("fm_band.csv", start=np.datetime64("2024-05-04T21:40"), last=2, offset_db=20,
                         correction="fm_cable.csv")
        table = answer("trace", "fm_band.csv", "--from", "21:40", "--last", 2, "--offset", 20, "--correction", "fm_cable.csv",
                       "--all-points")
        self.assert_rows(last.points(), table, POINTS)
        self.assertEqual(Recording("fm_band.csv", start="-10m").levels.shape[0], 61)

    def test_files_are_one_recording(self):
        with tempfile.TemporaryDirectory() as folder:
            with open("fm_band.csv", "rb") as file:
                lines = file.readlines()
            late, early = os.path.join(folder, "late.csv"), os.path.join(folder, "early.csv.gz")
            with open(late, "wb") as file:
                file.writelines(lines[960:])
            with gzip.open(early, "wb") as packed:
                packed.writelines(lines[:960])
            try:
                both = Recording([late, early]).levels
            except rfutils.InputError as error:
                if "gzip" not in str(error):
                    raise
                self.skipTest("built without zlib")
            np.testing.assert_array_equal(both, Recording("fm_band.csv").levels)

    def test_traces_without_frequencies(self):
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "traces.csv")
            with open(file, "w", encoding="ascii") as output:
                output.write("-30,-40,nan\n-31,,-50\n")
            traces = Recording(file)
            np.testing.assert_array_equal(traces.levels, [[-30, -40, np.nan], [-31, np.nan, -50]])
            self.assertTrue(np.isnat(traces.times).all())
            self.assertEqual(len(traces.frequencies), 0)
            self.assertEqual(traces.points()["count"].tolist(), [2, 1, 1])
            with self.assertRaises(rfutils.InputError) as caught:
                traces.peaks()
            self.assertEqual(str(caught.exception), refusal("peaks", file))

    def test_results_are_arrays_for_everyone(self):
        recording = Recording("fm_band.csv")
        self.assertEqual((recording.levels.dtype, recording.levels.flags.c_contiguous, recording.levels.flags.writeable),
                         (np.float64, True, True))
        self.assertEqual(recording.times.dtype, np.dtype("M8[us]"))

    def test_errors_have_file_and_line(self):
        with self.assertRaises(rfutils.InputError) as caught:
            Recording("missing.csv").levels
        self.assertEqual((caught.exception.file, caught.exception.line), ("missing.csv", None))
        self.assertEqual(str(caught.exception), refusal("trace", "missing.csv"))
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "broken.csv")
            with open(file, "w", encoding="ascii") as output:
                output.write("-30,-40\n-30,abc\n-31,-41\n")
            with self.assertRaises(rfutils.InputError) as caught:
                Recording(file, strict=True).levels
            self.assertEqual((caught.exception.file, caught.exception.line), (file, 2))
            self.assertEqual(str(pickle.loads(pickle.dumps(caught.exception))), str(caught.exception))
            with self.assertWarns(rfutils.Note) as noted:
                self.assertEqual(len(Recording(file).levels), 2)
            self.assertIn(f"{file}:2:", str(noted.warning))
        self.assertRaises(ValueError, Recording, "fm_band.csv", band=(2.0, 1.0))
        self.assertRaises(ValueError, Recording, "fm_band.csv", start="yesterday")
        self.assertRaises(ValueError, Recording, [])

    def test_recordings_pickle(self):
        window = Recording("fm_band.csv", band=(98e6, 98.5e6), start="21:20", last=3, offset_db=1)
        again = pickle.loads(pickle.dumps(window))
        np.testing.assert_array_equal(again.levels, window.levels)
        self.assertEqual(repr(again), repr(window))

    def test_threads_read_at_once(self):
        expected = Recording("fm_band.csv").levels
        with ThreadPoolExecutor(4) as pool:
            for own in pool.map(lambda _: Recording("fm_band.csv").levels, range(8)):
                np.testing.assert_array_equal(own, expected)


class Answers(InSamples):
    def test_points(self):
        self.assert_rows(Recording("fm_band.csv").points(limit="-60dBm", unit="dBuV/m", gain=2),
                         answer("trace", "fm_band.csv", "--all-points", "--limit", "-60", "--unit", "dBuV/m", "--gain", 2),
                         {**POINTS, "above": "above"})
        self.assert_rows(Recording("fm_band.csv", band=(98e6, 99e6)).points(keep=100, more=True),
                         answer("trace", "fm_band.csv", "--band", "98M:99M", "--all-points", "--keep", 100, "--more"),
                         {**POINTS, **MORE})

    def test_markers(self):
        fm = Recording("fm_band.csv")
        for name, own, options, columns in [
                ("frequencies", fm.markers([88.1e6, 98.3e6, 98.3e6, 107.999e6]),
                 ["--marker", "88.1MHz", "--marker", "98.3MHz", "--marker", "98.3MHz", "--marker", "107.999MHz"], {}),
                ("points behind them", fm.markers(98.3e6, points=[511, 0]),
                 ["--marker", "98.3MHz", "--marker", 511, "--marker", 0], {}),
                ("limit", fm.markers(points=264, limit="47dBuV"), ["--marker", 264, "--limit", "47dBuV"], {"above": "above"}),
                ("field", fm.markers([88.1e6, 98.3e6], limit="60dBuV/m", unit="dBuV/m", center_hz=1e8, gain=2),
                 ["--marker", "88.1MHz", "--marker", "98.3MHz", "--limit", "60dBuV/m", "--unit", "dBuV/m", "--center",
                  "100MHz", "--gain", 2], {"above": "above"}),
                ("own frequencies", fm.markers([88.1e6, 107.9e6], unit="V/m"),
                 ["--marker", "88.1MHz", "--marker", "107.9MHz", "--unit", "V/m"], {}),
                ("more of the recent ones", fm.markers([98.3e6, 92.8e6], keep=100, more=True, limit=-42, unit="W"),
                 ["--marker", "98.3MHz", "--marker", "92.8MHz", "--keep", 100, "--more", "--limit", -42, "--unit", "W"],
                 {"above": "above", **MORE})]:
            with self.subTest(name):
                rows = answer("trace", "fm_band.csv", *options)
                for row in rows:
                    is_frequency = row["marker"].endswith("MHz")
                    row["marker"] = float(row["marker"].removesuffix("MHz")) if is_frequency else None
                names = {"marker_hz": "marker", **POINTS, **columns}
                self.assertEqual(set(own.dtype.names), set(names))
                self.assert_rows(own, rows, names)
        window = Recording("fm_band.csv", band=(98e6, 99e6), every=2)
        self.assert_rows(window.markers(98.3e6), answer("trace", "fm_band.csv", "--band", "98M:99M", "--every", 2, "--marker",
                                                        "98.3MHz"), POINTS)

    def test_markers_are_rows_of_points(self):
        own = Recording("wifi_band.csv").markers([2.437e9, 2.4e9], limit=-70, more=True)
        points = Recording("wifi_band.csv").points(limit=-70, more=True)[own["point"]]
        for name in points.dtype.names:
            np.testing.assert_array_equal(own[name], points[name])

    def test_refused_markers(self):
        fm, levels = Recording("fm_band.csv"), Recording("levels.txt")
        for own, arguments in [(lambda: fm.markers([98.3e6, 200e6]), ["fm_band.csv", "--marker", "200MHz"]),
                               (lambda: levels.markers(1e6), ["levels.txt", "--marker", "1MHz"])]:
            with self.subTest(arguments), self.assertRaises(rfutils.InputError) as caught:
                own()
            self.assertEqual(str(caught.exception), refusal("trace", *arguments))
        with self.assertRaises(rfutils.InputError) as caught:
            fm.markers(points=[3, 512])
        self.assertEqual(str(caught.exception), "fm_band.csv: marker at point 512: the points of the recording are 0 to 511")
        self.assertTrue(np.isnan(levels.markers(points=0)["frequency_hz"]).all())
        for arguments in ({}, {"frequencies_hz": [np.nan]}, {"frequencies_hz": [[1e8]]}, {"points": [-1]}, {"points": [1.5]},
                          {"points": [2**31]}, {"points": [[1]]}, {"frequencies_hz": "98.3MHz"}):
            with self.subTest(arguments):
                self.assertRaises(ValueError, fm.markers, **arguments)

    def test_peaks(self):
        for name, arguments, options in [
                ("as it is", {}, []),
                ("options", {"above_db": 30, "width_at_db": 10, "window": 51, "unit": "V"},
                 ["--above", 30, "--width-at", 10, "--window", 51, "--unit", "V"]),
                ("field", {"unit": "dBuV/m"}, ["--unit", "dBuV/m"]),
                ("spurs", {"spurs": [(98.3e6, 1e6), (None, 80e3)]}, ["--spur", "98.3MHz:1MHz", "--spur", "hops:80kHz"])]:
            with self.subTest(name):
                self.assert_rows(Recording("fm_band.csv").peaks(**arguments), answer("peaks", "fm_band.csv", *options), PEAKS)
        self.assertEqual(len(Recording("wifi_band.csv").peaks(above_db=60)), 0)
        for arguments in ({"above_db": 0}, {"window": 4}, {"spurs": [(98.3e6, 0)]}):
            self.assertRaises(ValueError, Recording("fm_band.csv").peaks, **arguments)

    def test_occupancy(self):
        for name, file, arguments, options in [
                ("limit", "fm_band.csv", {"limit": -70, "channels": (88e6, 200e3, 100)},
                 ["--limit", -70, "--channels", "88M:200k:100"]),
                ("field", "fm_band.csv", {"limit": "40dBuV/m", "channels": (107.6e6, 200e3, 4), "unit": "dBuV/m"},
                 ["--limit", "40dBuV/m", "--channels", "107.6M:200k:4", "--unit", "dBuV/m"]),
                ("points", "wifi_band.csv", {"above_db": 20}, ["--above", 20]),
                ("by hour", "wifi_band.csv", {"above_db": 20, "channels": (2402e6, 20e6, 4), "by_hour": True},
                 ["--above", 20, "--channels", "2402M:20M:4", "--by", "hour"])]:
            with self.subTest(name), warnings.catch_warnings():
                warnings.simplefilter("ignore", rfutils.Note)
                own = Recording(file).occupancy(**arguments)
                tables = answer("occupancy", file, *options)
                hour = {"hour": "hour"} if "by_hour" in arguments else {}
                self.assert_rows(own.channels, tables["channels"], {**hour, **CHANNELS})
                self.assert_rows(own.band, tables["band"], {**hour, **BAND})
        with self.assertWarns(rfutils.Note):
            Recording("fm_band.csv").occupancy(limit=-70, channels=(107.6e6, 200e3, 4))
        for arguments in ({}, {"limit": -70, "above_db": 3}, {"limit": "0V"}, {"limit": -70, "channel_width_hz": 1e3}):
            self.assertRaises(ValueError, Recording("fm_band.csv").occupancy, **arguments)

    def test_power(self):
        self.assert_rows(Recording("fm_band.csv").power((98.2e6, 98.4e6), (92.7e6, 92.9e6), spacing_hz=400e3, unit="W"),
                         answer("power", "fm_band.csv", "--channel", "98.2M:98.4M", "--channel", "92.7M:92.9M", "--spacing",
                                "400k", "--unit", "W"), {**POWER, "relative_db": "relativeDb"})
        self.assert_rows(Recording("fm_band.csv").power((98.2e6, 98.4e6), series=True, enbw_bins=1.5, percent=90),
                         answer("power", "fm_band.csv", "--channel", "98.2M:98.4M", "--series", "--enbw", 1.5, "--share", 90),
                         {"sweep": "sweep", "time": "time", **POWER})
        with self.assertRaises(rfutils.InputError) as caught:
            Recording("fm_band.csv").power((108e6, 109e6))
        self.assertEqual(str(caught.exception), refusal("power", "fm_band.csv", "--channel", "108M:109M"))

    def test_mask(self):
        names = {"from_hz": "fromMHz", "to_hz": "toMHz", "frequency_hz": "frequencyMHz", "level": "level", "limit": "limit",
                 "margin": "margin"}
        self.assert_rows(Recording("wifi_band.csv").mask("wifi_mask.csv"),
                         answer("mask", "wifi_band.csv", "--mask", "wifi_mask.csv", status=3), names)
        self.assertEqual(len(Recording("wifi_band.csv").mask("wifi_mask.csv", of="average")), 0)
        with self.assertRaises(rfutils.InputError) as caught:
            Recording("fm_band.csv").mask("wifi_mask.csv")
        self.assertEqual(str(caught.exception), refusal("mask", "fm_band.csv", "--mask", "wifi_mask.csv"))
        with self.assertRaises(rfutils.InputError) as caught:
            Recording("levels.txt").mask("wifi_mask.csv")
        self.assertEqual(str(caught.exception), refusal("mask", "levels.txt", "--mask", "wifi_mask.csv"))

    def test_compare(self):
        names = {"point": "point", "frequency_hz": "frequencyMHz", "a": "a", "b": "b", "difference": "difference"}
        for of in ("average", "maximum", "minimum", "median"):
            own = Recording("fm_band.csv").compare(Recording("fm_next_day.csv"), of=of, above_db=10)
            tables = answer("compare", "fm_band.csv", "fm_next_day.csv", "--above", 10, "--of", of)
            self.assert_rows(own.points, tables["points"], names)
            self.assert_rows(own.signals, tables["signals"], {"from_hz": "fromMHz", "to_hz": "toMHz", **names})
        with self.assertRaises(rfutils.InputError) as caught:
            Recording("fm_band.csv").compare(Recording("wifi_band.csv"), resample=True)
        self.assertEqual(str(caught.exception), refusal("compare", "fm_band.csv", "wifi_band.csv", "--resample"))
        with self.assertRaises(rfutils.InputError) as caught:
            Recording("fm_band.csv").compare(Recording("wifi_band.csv"))
        self.assertEqual(str(caught.exception).replace("; resample", "; --resample"),
                         refusal("compare", "fm_band.csv", "wifi_band.csv"))

    def test_cut(self):
        with tempfile.TemporaryDirectory() as folder:
            own, other = os.path.join(folder, "own.csv"), os.path.join(folder, "other.csv")
            Recording("fm_band.csv", band=(98e6, 98.5e6), start="21:20", offset_db=3).cut(own)
            refusal("cut", "fm_band.csv", "--band", "98M:98.5M", "--from", "21:20", "--offset", 3, "-o", other)
            with open(own, "rb") as a, open(other, "rb") as b:
                self.assertEqual(a.read(), b.read())
            self.assertRaises(ValueError, Recording(own).cut, own)
            self.assertRaises(rfutils.InputError, Recording("missing.csv").cut, os.path.join(folder, "none.csv"))
            self.assertEqual(sorted(os.listdir(folder)), ["other.csv", "own.csv"])


if __name__ == "__main__":
    unittest.main()
