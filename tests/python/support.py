"""What the tests of the Python package share. CMakeLists.txt gives RFUTILS_COMMAND and RFUTILS_SAMPLES."""
import json
import os
import subprocess
import unittest

COMMAND = os.environ["RFUTILS_COMMAND"]
SAMPLES = os.environ["RFUTILS_SAMPLES"]


def sample(name):
    return os.path.join(SAMPLES, name)


def answer(*arguments, status=0):
    """What the command answers, as JSON."""
    run = subprocess.run([COMMAND, *map(str, arguments), "--format", "json"], stdout=subprocess.PIPE,
                         stderr=subprocess.PIPE, check=False)
    if run.returncode != status:
        raise AssertionError(run.stderr.decode())
    return json.loads(run.stdout)


def refusal(*arguments):
    """The error or note of the command, without its name."""
    run = subprocess.run([COMMAND, *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    return run.stderr.decode().strip().removeprefix("rfutils: ")


class InSamples(unittest.TestCase):
    """Runs in the folder of the samples."""

    def setUp(self):
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(SAMPLES)

    def assert_rows(self, table, rows, names):
        """Each column of a table is bit for bit that of the command.

        names: column to the command's one; one that ends in "_hz" is in MHz there, one of times is text.
        """
        self.assertEqual(len(table), len(rows))
        for name, other in names.items():
            for place, (own, row) in enumerate(zip(table[name], rows)):
                expected = row[other]
                if table.dtype[name].kind == "M":
                    own, expected = str(own)[:19].replace("T", " "), expected[:19]
                elif expected is None:
                    self.assertNotEqual(own, own, (name, place))
                    continue
                elif name.endswith("_hz"):
                    # Either side may be the one that was computed from the other.
                    self.assertTrue(own == expected * 1e6 or own / 1e6 == expected, (name, place, own, expected))
                    continue
                self.assertEqual(own, expected, (name, place))
