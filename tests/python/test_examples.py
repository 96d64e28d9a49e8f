"""The ten lines of the README and the notebooks: what they print, and what is in their pictures."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import numpy as np
from support import sample

try:
    import matplotlib
    from matplotlib.image import imread
except ImportError:
    matplotlib = None

import rfutils

SOURCE = os.environ["RFUTILS_SOURCE"]


def near(picture, colors, tolerance=0.02):
    """Of each pixel whether it has one of the colours."""
    flat = picture[..., :3].reshape(-1, 3)
    found = np.zeros(len(flat), dtype=bool)
    for color in colors:
        found |= (np.abs(flat - np.asarray(color)[:3]) < tolerance).all(axis=1)
    return found.reshape(picture.shape[:2])


@unittest.skipIf(matplotlib is None, "no matplotlib")
class Examples(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def run_script(self, *arguments):
        run = subprocess.run([sys.executable, "-W", "error", *arguments], cwd=self.folder, stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE, check=False, env={**os.environ, "MPLBACKEND": "agg"})
        self.assertEqual(run.returncode, 0, run.stderr.decode())
        return run.stdout.decode()

    def assert_shows_fm_band(self, picture):
        """The brightest column of the waterfall lies at the strongest station, darker ones where there is none."""
        palette = matplotlib.colormaps["viridis"](np.linspace(0, 1, 64))
        mesh = near(picture, palette, 0.03)
        # The colour bar stands apart, behind a column without mesh.
        width = mesh.shape[1]
        filled = mesh[:int(picture.shape[0] * 0.9)].sum(axis=0) > 0.2 * picture.shape[0]
        first = int(np.argmax(filled))
        last = first + int(np.argmin(filled[first:width])) - 1
        self.assertGreater(last - first, width // 3)
        rows = np.flatnonzero(mesh[:, first + 5])
        top, bottom = rows.min() + 3, int(np.percentile(rows, 95))
        brightness = picture[top:bottom, first:last + 1, :3].mean(axis=(0, 2))
        recording = rfutils.Recording(sample("fm_band.csv"))
        strongest = recording.frequencies[recording.points()["average"].argmax()]
        at = 88e6 + np.argmax(brightness) / (last - first) * 20e6
        self.assertLess(abs(at - strongest), 150e3)
        quiet = np.median(brightness)
        self.assertGreater(brightness.max(), 1.5 * quiet)

    def test_the_ten_lines_of_the_readme(self):
        with open(os.path.join(SOURCE, "python", "README.md"), encoding="utf-8") as file:
            page = file.read()
        [lines] = re.findall(r"```python\n(.*?)```", page, re.S)
        [shown] = re.findall(r"```text\n(.*?)```", page, re.S)
        self.assertLessEqual(len([line for line in lines.splitlines() if line]), 10)
        shutil.copy(sample("fm_band.csv"), self.folder)
        printed = self.run_script("-c", lines)
        self.assertTrue(printed.startswith(shown.removesuffix("...\n")), printed)
        self.assertEqual(len(printed.splitlines()), len(rfutils.Recording(sample("fm_band.csv")).peaks()))
        self.assert_shows_fm_band(imread(os.path.join(self.folder, "waterfall.png")))

    def test_the_tutorial(self):
        with open(os.path.join(SOURCE, "docs", "python.md"), encoding="utf-8") as file:
            blocks = re.findall(r"```(python|text)\n(.*?)```", file.read(), re.S)
        for name in ("fm_band.csv", "catalogue.json"):
            shutil.copy(sample(name), self.folder)
        printed = self.run_script("-c", "\n".join(text for kind, text in blocks if kind == "python"))
        self.assertEqual(printed, "".join(text for kind, text in blocks if kind == "text"))
        self.assert_shows_fm_band(imread(os.path.join(self.folder, "waterfall.png")))

    def test_the_notebook_of_a_band(self):
        printed = self.run_script(os.path.join(SOURCE, "examples/notebooks/band.py"), sample("fm_band.csv"), "band.png")
        self.assertEqual(len(printed.splitlines()), 17)
        self.assertRegex(printed, r"\n +98\.2999 +-37\.7 dBm +79\.15 dBuV/m +1\.000\n|\n +98\.\d+ +-37\.7 dBm")
        picture = imread(os.path.join(self.folder, "band.png"))
        self.assertEqual(picture.shape[:2], (1000, 1100))
        self.assert_shows_fm_band(picture[:500])
        # Occupied channels as blue bars: fewer than a quarter of the axis, and not none.
        bars = near(picture[800:], [matplotlib.colors.to_rgb("C0")])
        self.assertTrue(0.01 < bars.mean() < 0.4, bars.mean())

    def test_the_notebook_of_a_map(self):
        printed = self.run_script(os.path.join(SOURCE, "examples/notebooks/terrain.py"), sample("terrain.asc"),
                                  sample("terrain.tab"), "terrain.png")
        self.assertEqual(printed, "6500 m, clear: False, loss of free space 101.4 dB and of the edge 34.5 dB\n")
        picture = imread(os.path.join(self.folder, "terrain.png"))
        red = near(picture[:600], [(1.0, 0.0, 0.0)])
        columns = np.flatnonzero(red.any(axis=0))
        terrain = rfutils.load_raster(sample("terrain.asc"))
        colormap, _ = terrain.colormap()
        area = near(picture[:600], colormap(np.linspace(0, 1, 128)), 0.03)
        wide = np.flatnonzero(area.sum(axis=0) > 200)
        left, right = wide.min(), wide[np.flatnonzero(np.diff(wide) > 5)[0]] if (np.diff(wide) > 5).any() else wide.max()
        scale = (right - left) / 8000.0  # pixels a metre
        self.assertAlmostEqual(columns.min(), left + 1000 * scale, delta=5)
        self.assertAlmostEqual(columns.max(), left + 7500 * scale, delta=5)


if __name__ == "__main__":
    unittest.main()
