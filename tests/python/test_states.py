"""States that merge, beside the command and beside one run over everything."""
import os
import pickle
import subprocess
import tempfile
import unittest

import numpy as np
from support import COMMAND, InSamples, answer, refusal

import rfutils
from rfutils import Recording, State

HALVES = ({"stop": "21:34:50"}, {"start": "21:35"})
# name, arguments of state(), the command's options
KINDS = [("points", [], {"limit": -60}, ["trace", "--limit", -60]),
         ("peaks", [], {}, ["peaks"]),
         ("occupancy", [], {"limit": "37dBuV", "channels": (88e6, 200e3, 100), "by_hour": True},
          ["occupancy", "--limit", "37dBuV", "--channels", "88M:200k:100", "--by", "hour"]),
         ("power", [(98.2e6, 98.4e6)], {"spacing_hz": 400e3, "enbw_bins": 1.5},
          ["power", "--series", "--channel", "98.2M:98.4M", "--spacing", "400k", "--enbw", 1.5])]


class States(InSamples):
    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def file(self, name):
        return os.path.join(self.folder, name)

    def run_command(self, *arguments):
        subprocess.run([COMMAND, *map(str, arguments)], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def bytes_of(self, name):
        with open(self.file(name), "rb") as file:
            return file.read()

    def assert_same(self, own, expected):
        self.assertEqual(own.dtype, expected.dtype)
        for name in expected.dtype.names:
            np.testing.assert_array_equal(own[name], expected[name])

    def halves(self, kind, channels, options):
        return [Recording("fm_band.csv", **half).state(kind, *channels, **options) for half in HALVES]

    def test_the_command_writes_the_same_bytes(self):
        for kind, channels, options, command in KINDS:
            with self.subTest(kind):
                own = Recording("fm_band.csv").state(kind, *channels, **options)
                self.run_command(command[0], "fm_band.csv", *command[1:], "--state", self.file(kind))
                self.assertEqual(bytes(own), self.bytes_of(kind))
                self.assertEqual(State.load(self.file(kind)), own)

    def test_merged_halves_are_what_the_command_merges(self):
        for kind, channels, options, _ in KINDS:
            with self.subTest(kind):
                early, late = self.halves(kind, channels, options)
                early.save(self.file("early"))
                late.save(self.file("late"))
                whole = State.merged([late, early])
                self.run_command("merge", self.file("late"), self.file("early"), "--state", self.file("whole"))
                self.assertEqual(bytes(whole), self.bytes_of("whole"))
                self.assertEqual((whole.of, whole.sweeps), (kind, 240))
                self.assertEqual((str(whole.first_time)[:19], str(whole.last_time)[:19]),
                                 ("2024-05-04T21:15:00", "2024-05-04T21:54:50"))

    def test_merged_halves_answer_as_one_run(self):
        recording = Recording("fm_band.csv")
        kinds = {kind: (channels, options) for kind, channels, options, _ in KINDS}
        merged = {kind: State.merged(self.halves(kind, *kinds[kind])) for kind in kinds}
        points, expected = merged["points"].points(), recording.points(limit=-60)
        for name in ("count", "above", "maximum", "minimum"):
            np.testing.assert_array_equal(points[name], expected[name])
        np.testing.assert_allclose(points["average"], expected["average"], rtol=1e-12)
        peaks, expected = merged["peaks"].peaks(), recording.peaks()
        for name in ("frequency_hz", "width_hz", "maximum", "present", "first", "last"):
            np.testing.assert_array_equal(peaks[name], expected[name])
        np.testing.assert_allclose(peaks["floor"], expected["floor"], atol=0.05)
        busy = recording.occupancy(**kinds["occupancy"][1])
        self.assert_same(merged["occupancy"].occupancy().channels, busy.channels)
        power = recording.power((98.2e6, 98.4e6), series=True, spacing_hz=400e3, enbw_bins=1.5)
        self.assert_same(merged["power"].power(), power)

    def test_markers_of_states_are_those_of_the_command(self):
        state = State.merged(self.halves("points", [], {"limit": -60}))
        state.save(self.file("state"))
        rows = answer("merge", self.file("state"), "--marker", "98.3MHz", "--marker", 3, "--unit", "dBuV/m")
        self.assert_rows(state.markers(98.3e6, points=3, unit="dBuV/m"), rows,
                         {"point": "point", "frequency_hz": "frequencyMHz", "count": "count", "average": "average",
                          "maximum": "maximum", "minimum": "minimum", "above": "above"})
        with self.assertRaises(rfutils.InputError) as caught:
            state.markers(200e6)
        self.assertEqual(str(caught.exception).replace("fm_band.csv", self.file("state")),
                         refusal("merge", self.file("state"), "--marker", "200MHz"))
        self.assertRaises(ValueError, state.markers)
        self.assertRaises(ValueError, Recording("fm_band.csv").state("peaks").markers, 98.3e6)

    def test_states_pickle_and_compare(self):
        early, late = self.halves("points", [], {})
        again = pickle.loads(pickle.dumps(early))
        self.assertEqual((again, hash(again), again.name), (early, hash(early), "fm_band.csv"))
        self.assertNotEqual(early, late)
        self.assertEqual(repr(early), "<rfutils.State of points, 120 sweeps>")

    def test_refusals_name_the_states(self):
        early, late = self.halves("points", [], {})
        peaks = Recording("fm_band.csv").state("peaks")
        for name, states, problem in [("kinds", [late, peaks], "is a state of rfutils peaks"),
                                      ("overlap", [early, early], "begins"),
                                      ("settings", [early, Recording("fm_band.csv", start="21:35").state("points", limit=-3)],
                                       "--limit")]:
            with self.subTest(name), self.assertRaises(rfutils.InputError) as caught:
                State.merged(states)
            self.assertIn(problem, str(caught.exception))
            self.assertNotIn("/tmp", str(caught.exception))
        damaged = bytearray(bytes(early))
        damaged[100] ^= 1
        with self.assertRaises(rfutils.InputError) as caught:
            State(damaged, name="mine")
        self.assertEqual(str(caught.exception), "mine: is damaged or cut")
        self.assertRaises(rfutils.InputError, State, b"no state")
        self.assertRaises(ValueError, State.merged, [])
        self.assertRaises(ValueError, early.peaks)
        self.assertRaises(ValueError, Recording("fm_band.csv").state, "colours")
        self.assertRaises(ValueError, Recording("fm_band.csv").state, "occupancy")
        self.assertRaises(TypeError, Recording("fm_band.csv").state, "peaks", above_db=3)


if __name__ == "__main__":
    unittest.main()
