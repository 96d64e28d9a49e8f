"""The package as a whole: its documentation, what it brings along, its memory."""
import doctest
import importlib.util
import os
import subprocess
import sys
import tracemalloc
import unittest

import numpy as np
from support import InSamples

import rfutils

MODULES = ("_answers", "_catalogues", "_checks", "_errors", "_maps", "_recording", "_states", "_tables", "_units")
# What an import may not bring along: each is for some results only.
OPTIONAL = ("matplotlib", "distributed", "dask", "pandas", "affine")


class Package(InSamples):
    def test_examples_of_docstrings(self):
        examples = 0
        for name in MODULES:
            module = importlib.import_module("rfutils." + name)
            if name == "_maps" and importlib.util.find_spec("matplotlib") is None:
                continue
            result = doctest.testmod(module, extraglobs=vars(rfutils))
            self.assertEqual(result.failed, 0)
            examples += result.attempted
        self.assertGreater(examples, 40)

    def test_everything_public_is_documented(self):
        for name in rfutils.__all__:
            with self.subTest(name):
                self.assertTrue(getattr(rfutils, name).__doc__)

    def test_an_import_brings_numpy_and_nothing_else(self):
        code = "import sys, rfutils; print(*[name for name in %r if name in sys.modules])" % (OPTIONAL,)
        self.assertEqual(subprocess.check_output([sys.executable, "-c", code]).decode().strip(), "")

    def test_memory_does_not_grow_with_calls(self):
        recording = rfutils.Recording("levels.txt")
        values = np.linspace(-100, 0, 10)

        def work(calls):
            for _ in range(calls):
                rfutils.convert(-30.0, "V")
                rfutils.convert(values, "dBuV/m", center_hz=1e8)
                rfutils.text(-30.0, "W")
                try:
                    rfutils.convert(0.0, "dBm", unit="V")
                except ValueError:
                    pass
            for _ in range(calls // 100):
                list(recording.chunks())
                rfutils.Setups("setups.json")
                try:
                    rfutils.Catalogue("missing.json")
                except rfutils.InputError:
                    pass

        calls = 1000000 if os.environ.get("RFUTILS_LONG_TESTS") == "1" else 2000
        tracemalloc.start()
        self.addCleanup(tracemalloc.stop)
        work(500)
        before = tracemalloc.get_traced_memory()[0]
        resident = self.resident()
        work(calls)
        self.assertLess(tracemalloc.get_traced_memory()[0] - before, 20000)
        self.assertLess(self.resident() - resident, 8 << 20)

    @staticmethod
    def resident():
        with open("/proc/self/statm", encoding="ascii") as file:
            return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


if __name__ == "__main__":
    unittest.main()
