#!/usr/bin/env python3
"""Tests of compare.py."""
import unittest

from compare import differences, ulps


class Compare(unittest.TestCase):
    def test_counts_places(self):
        self.assertEqual(ulps("3ff0000000000000", "3ff0000000000001"), 1)
        self.assertEqual(ulps("3f800000", "3f7fffff"), 1)
        self.assertEqual(ulps("0000000000000000", "8000000000000000"), 0)  # both zeros
        self.assertEqual(ulps("0000000000000001", "8000000000000001"), 2)
        self.assertIsNone(ulps("nan", "3f800000"))
        self.assertIsNone(ulps("3f800000", "3ff0000000000000"))

    def test_same_means_equal(self):
        line = ["same makeFrequencyUnit(4059000000000000) 100.000000 MHz"]
        self.assertEqual(differences(line, line), ([], 0))
        self.assertEqual(len(differences(line, [line[0].replace("0 MHz", "1 MHz")])[0]), 1)
        bits = ["same mathRoundOff 2(4059000000000000) 3ff0000000000000"]
        self.assertEqual(len(differences(bits, [bits[0][:-1] + "1"])[0]), 1)

    def test_libm_allows_one_place(self):
        line = "libm utmToLatLng 32 0(48e30fa0,4aa00000) 423e0000 410c0000"
        self.assertEqual(differences([line], [line[:-1] + "1"]), ([], 1))
        self.assertEqual(len(differences([line], [line[:-1] + "2"])[0]), 1)
        self.assertEqual(len(differences([line], [line[:-8] + "nan"])[0]), 1)
        self.assertEqual(len(differences([line], [line[:-9]])[0]), 1)

    def test_the_calls_have_to_be_the_same(self):
        self.assertEqual(len(differences(["libm f(0) 0"], ["libm f(1) 0"])[0]), 1)
        self.assertEqual(len(differences(["same f(0) 0"], [])[0]), 1)


if __name__ == "__main__":
    unittest.main()
