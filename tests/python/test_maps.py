"""Maps, their places and colours, against the command."""
import os
import pickle
import subprocess
import tempfile
import unittest

import numpy as np
from support import COMMAND, InSamples, answer, refusal

import rfutils

try:
    import matplotlib
    matplotlib.use("Agg")
    from matplotlib.image import imread
except ImportError:
    matplotlib = None


class Maps(InSamples):
    def test_cells_bounds_and_transform_are_those_of_the_command(self):
        for file in ("terrain.asc", "terrain_bil.bil"):
            with self.subTest(file):
                own, facts = rfutils.load_raster(file), answer("raster", file)
                self.assertEqual(own.values.shape, (facts["map"]["rows"], facts["map"]["columns"]))
                self.assertEqual(own.values.count(), facts["map"]["measured"])
                self.assertEqual((own.values.min(), own.values.max()),
                                 (np.float32(facts["map"]["smallest"]), np.float32(facts["map"]["largest"])))
                self.assertEqual(own.no_data, facts["map"]["noData"])
                for (column, row), corner in zip([(0, 0), (1, 0), (1, 1), (0, 1)], facts["corners"]):
                    rows, columns = own.values.shape
                    self.assertEqual(own.transform * (column * columns, row * rows), (corner["x"], corner["y"]))
                for column, row in ((0, 0), (10, 20), (100, 7)):
                    value = answer("raster", file, "--at", f"{column},{row}")["value"]
                    own_value = own.values[row, column]
                    self.assertEqual(None if own_value is np.ma.masked else float(own_value), value)

    def test_the_transform_is_that_of_rasterio(self):
        own = rfutils.load_raster("terrain.asc").transform
        self.assertEqual(tuple(own), (25.0, 0.0, 436000.0, 0.0, -25.0, 5268000.0))
        try:
            from affine import Affine
        except ImportError:
            self.skipTest("no python3-affine")
        self.assertEqual(Affine(*own) * (3, 5), own * (3, 5))
        self.assertEqual(Affine.from_gdal(own.c, own.a, own.b, own.f, own.d, own.e), Affine(*own))

    def test_places(self):
        terrain = rfutils.load_raster("terrain.asc")
        cell = answer("raster", "terrain.asc", "--at-place", "47.55,8.2")
        point = terrain.point_at_place(47.55, 8.2)
        self.assertEqual(point, (cell["x"], cell["y"]))
        self.assertEqual(terrain.cell_at(*point), (cell["row"], cell["column"]))
        with self.assertRaises(rfutils.InputError) as caught:
            terrain.cell_at(0, 0)
        self.assertEqual(str(caught.exception), refusal("raster", "terrain.asc", "--at-map", "0,0"))

    @unittest.skipIf(matplotlib is None, "no matplotlib")
    def test_the_image_is_the_picture_of_the_command(self):
        with tempfile.TemporaryDirectory() as folder:
            png = os.path.join(folder, "terrain.png")
            subprocess.run([COMMAND, "raster", "terrain.asc", "--png", png], check=True, stdout=subprocess.DEVNULL)
            picture = np.round(imread(png) * 255).astype(np.uint8)
        own = rfutils.load_raster("terrain.asc").image()
        self.assertEqual((own.shape, own.dtype), (picture.shape, np.uint8))
        shown = picture[..., 3] > 0
        np.testing.assert_array_equal(own[..., 3], picture[..., 3])
        np.testing.assert_array_equal(own[shown], picture[shown])

    @unittest.skipIf(matplotlib is None, "no matplotlib")
    def test_the_colormap_has_the_colours_of_the_table(self):
        terrain = rfutils.load_raster("terrain.asc")
        colormap, norm = terrain.colormap(1001)  # one colour a metre
        image = terrain.image()[..., :3]
        own = colormap(norm(terrain.values), bytes=True)
        measured = ~np.ma.getmaskarray(terrain.values)
        # Heights are whole metres; at a bound of two ranges the table has two colours.
        off = np.abs(own[measured][:, :3].astype(int) - image[measured]).max(axis=1)
        self.assertLess(np.mean(off > 1), 0.01)
        self.assertTrue((own[~measured][:, 3] == 0).all())

    def test_profile(self):
        own = rfutils.load_raster("terrain.asc").profile((437000, 5266500), (443500, 5266500), heights=(10, 10),
                                                         center_hz=433e6)
        facts = answer("profile", "terrain.asc", "--start", "437000,5266500", "--end", "443500,5266500", "--heights", "10,10",
                       "--center", "433MHz")
        columns = [name for name in own if name not in ("distances", "heights")]
        self.assertEqual([own[name] for name in columns], list(facts.values()))
        self.assertEqual((len(own["distances"]), own["distances"][-1]), (facts["samples"], facts["distance"]))
        with self.assertRaises(rfutils.InputError):
            rfutils.load_raster("terrain_bil.bil").profile((9.05, 47), (9.1, 47), heights=(1, 1), center_hz=1e9)

    def test_control_points(self):
        own, facts = rfutils.control_points("terrain.tab"), answer("tab", "terrain.tab")
        projection = facts["projection"]
        self.assertEqual([own.raster, own.units, own.utm_zone, own.hemisphere, own.central_meridian, own.origin_latitude,
                          own.false_easting, own.false_northing], list(projection.values()))
        for point, row in zip(own.points, facts["points"]):
            self.assertEqual([np.float32(part) for part in point],
                             [np.float32(row[name]) for name in ("column", "row", "x", "y", "longitude", "latitude")])

    def test_errors_have_file_and_line(self):
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "bad.asc")
            with open(file, "w", encoding="ascii") as output:
                output.write("ncols 3\nnrows 1\nxllcorner 0\nyllcorner 0\ncellsize 1\nNODATA_value -1\n1 x 3\n")
            with self.assertRaises(rfutils.InputError) as caught:
                rfutils.load_raster(file)
            self.assertEqual((caught.exception.file, caught.exception.line), (file, 7))
            self.assertEqual(str(caught.exception), refusal("raster", file))

    def test_maps_pickle(self):
        terrain = rfutils.load_raster("terrain.asc")
        again = pickle.loads(pickle.dumps(terrain))
        np.testing.assert_array_equal(again.values, terrain.values)
        self.assertEqual(repr(again), "<rfutils.Raster of terrain.asc, 320 x 240 cells>")


class Catalogues(InSamples):
    def test_choices_are_those_of_the_command(self):
        catalogue, rows = rfutils.Catalogue("catalogue.json"), answer("catalogue", "catalogue.json")
        own = [(*choice, choice.offered) for item in catalogue for choice in catalogue[item]]
        self.assertEqual(own, [tuple(row.values()) for row in rows])
        choices = catalogue["attenuation"]
        self.assertEqual((choices["AUTO"], len(choices), choices[-1] in choices), (choices["auto"], 6, True))
        self.assertEqual([choice.id for choice in choices.with_label("10 dB")], ["db10"])
        self.assertNotIn("nothing", catalogue)
        self.assertRaises(KeyError, lambda: choices["nothing"])
        self.assertEqual(pickle.loads(pickle.dumps(catalogue))["attenuation"][0], choices[0])

    def test_a_later_file_is_merged(self):
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "more.json")
            with open(file, "w", encoding="utf-8") as output:
                output.write('{"attenuation": [{"label": "Selbst", "id": "AUTO", "enum": 9, "dispSeq": 1}]}')
            merged = rfutils.Catalogue("catalogue.json", file)
        self.assertEqual(merged["attenuation"]["auto"].label, "Selbst")

    def test_setups_are_those_of_the_command(self):
        setups, rows = rfutils.Setups("setups.json"), answer("setups", "setups.json")
        self.assertEqual([(index, setup.id, setup.label) for index, setup in enumerate(setups)],
                         [tuple(row.values()) for row in rows])
        self.assertEqual(setups["bearing"], setups[4])
        self.assertRaises(KeyError, lambda: setups["nothing"])
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "setups.json")
            with open(file, "w", encoding="utf-8") as output:
                output.write('{"a": [{"id": "x"}, {"id": "y", "label": "Y"}]}')
            with self.assertWarns(rfutils.Note):
                self.assertEqual(len(rfutils.Setups(file)), 1)

    def test_errors_have_file_and_line(self):
        with self.assertRaises(rfutils.InputError) as caught:
            rfutils.Catalogue("levels.txt")
        self.assertEqual(str(caught.exception), refusal("catalogue", "levels.txt"))
        self.assertRaises(rfutils.InputError, rfutils.Setups, "missing.json")


if __name__ == "__main__":
    unittest.main()
