"""A fleet of recordings on Dask: two hundred of them, two workers, one of which is ended on the way."""
import os
import random
import signal
import subprocess
import sys
import tempfile
import unittest

import numpy as np

import rfutils

EXAMPLE = os.path.join(os.environ["RFUTILS_SOURCE"], "examples", "fleet")
RECORDINGS = 200
SWEEPS = 3


def write_recordings(folder):
    """Noise with a steady carrier and one that comes and goes; a sweep of two hops every ten seconds."""
    generator = random.Random(5)
    for number in range(RECORDINGS):
        with open(os.path.join(folder, f"{number:04}.csv"), "w", encoding="ascii") as file:
            for sweep in range(SWEEPS):
                seconds = (number * SWEEPS + sweep) * 10
                stamp = f"2024-05-04, {seconds // 3600:02}:{seconds // 60 % 60:02}:{seconds % 60:02}"
                for hop in range(2):
                    levels = [generator.gauss(-95, 1.5) for _ in range(64)]
                    if hop == 0:
                        levels[20] = -50.0 - generator.random()
                    elif number % 3 == 0:
                        levels[40] = -60.0
                    low = 100000000 + hop * 1600000
                    file.write(f"{stamp}, {low}, {low + 1600000}, 25000.00, 16, " +
                               ", ".join(f"{level:.2f}" for level in levels) + "\n")


class Fleet(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = folder.name
        write_recordings(cls.folder)
        cls.paths = [os.path.join(cls.folder, name) for name in sorted(os.listdir(cls.folder))]

    def assert_is_one_run(self, state):
        whole = rfutils.Recording(self.paths).state("peaks")
        self.assertEqual((state.sweeps, state.first_time, state.last_time),
                         (RECORDINGS * SWEEPS, whole.first_time, whole.last_time))
        own, expected = state.peaks(), whole.peaks()
        self.assertGreaterEqual(len(expected), 2)
        for name in expected.dtype.names:
            if name == "average":  # a sum of doubles, in another order
                np.testing.assert_allclose(own[name], expected[name], rtol=1e-12)
            else:
                np.testing.assert_array_equal(own[name], expected[name])

    def test_a_worker_that_dies_is_survived(self):
        sys.path.insert(0, EXAMPLE)
        self.addCleanup(sys.path.remove, EXAMPLE)
        import fleet
        from distributed import Client
        cluster = fleet.local_cluster(2)
        self.addCleanup(cluster.close)
        ended = []

        def end_one(done, all):
            if done >= 50 and not ended:
                ended.append(next(iter(cluster.workers.values())).pid)
                os.kill(ended[0], signal.SIGKILL)

        shuffled = random.Random(3).sample(self.paths, len(self.paths))
        with Client(cluster) as client:
            self.assertTrue(all("127.0.0.1" in address for address in client.scheduler_info()["workers"]))
            client.run(sys.path.insert, 0, EXAMPLE)
            client.upload_file(os.path.join(EXAMPLE, "fleet.py"))
            state = fleet.reduce_fleet(client, shuffled, on_progress=end_one)
        self.assertEqual(len(ended), 1)
        self.assert_is_one_run(state)

    def test_the_program(self):
        state = os.path.join(self.folder, "all.state")
        broken = os.path.join(self.folder, "zzz.csv")
        with open(broken, "w", encoding="ascii") as file:
            file.write("nothing\n")
        self.addCleanup(os.unlink, broken)
        run = subprocess.run([sys.executable, os.path.join(EXAMPLE, "fleet.py"), self.folder, "--workers", "2", "--state", state,
                              "--pattern", "*.csv"], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        self.addCleanup(os.unlink, state)
        errors = run.stderr.decode()
        self.assertEqual(run.returncode, 1, errors)
        self.assertIn(f"fleet.py: {broken}: holds no sweep", errors)
        self.assertIn("201 of 201 recordings", errors)
        loaded = rfutils.State.load(state)
        self.assert_is_one_run(loaded)
        self.assertEqual(len(run.stdout.decode().splitlines()), 1 + len(loaded.peaks()))


if __name__ == "__main__":
    unittest.main()
