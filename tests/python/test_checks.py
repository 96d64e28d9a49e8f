"""Findings in files and the rules, against the command."""
import gzip
import os
import subprocess
import sys
import tempfile
import unittest

from support import COMMAND, InSamples, answer, refusal

import rfutils

GRID = "ncols 4\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 30\nNODATA_value -9999\n1 2 3 4\n5 6 7 8\n"
# name, content
BAD_FILES = [("short row.asc", GRID.replace("6 7 8", "6")),
             ("TERRAIN.ASC", GRID),
             ("cells.hdr", "NCOLS x\nNROWS 2\n"),
             ("lonely.bil", "12345"),
             ("colours.clr", "0 0 0 300\n"),
             ("map.tab", '!table\n!version 300\nDefinition Table\n  File "gone.asc"\n  Type "RASTER"\n'),
             ("catalogue.json", '{"speed": [{"label": "Fast", "id": "None", "enum": 1, "dispSeq": 0}, 5]}'),
             ("levels.csv", "-30,-40\n-30,abc\n-31\n"),
             ("hops.csv", "2024-01-01, 10:00:00, 100000000, 102000000, 1000000, 5, -1, x\n" * 250),
             ("utf16.csv", "-30,-40\n".encode("utf-16")),
             ("broken.csv.gz", gzip.compress(b"2024-01-01, 10:00:00, 1000000, 2000000, 1000000, 5, -1\n" * 99)[:-9]),
             ("notes.txt", "nothing")]


class Checks(InSamples):
    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        for name, content in BAD_FILES:
            with open(self.file(name), "wb") as file:
                file.write(content if isinstance(content, bytes) else content.encode())

    def file(self, name):
        return os.path.join(self.folder, name)

    def assert_as_command(self, own, *arguments):
        """Each finding is that of the command, and all its members are."""
        run = subprocess.run([COMMAND, "check", *arguments, "--format", "json"], stdout=subprocess.PIPE, check=False)
        expected = answer("check", *arguments, status=run.returncode)
        self.assertEqual([found._asdict() for found in own], expected)
        self.assertIn(run.returncode, (0, 1))
        self.assertEqual(any(found.severity == "error" for found in own), run.returncode == 1)

    def test_samples_have_the_findings_of_the_command(self):
        names = sorted(name for name in os.listdir(".") if not name.endswith(".py"))
        for name in names:
            with self.subTest(name):
                self.assert_as_command(rfutils.check(name), name)
        self.assert_as_command(rfutils.check(names), *names)

    def test_bad_files_have_the_findings_of_the_command(self):
        for name, _ in BAD_FILES:
            with self.subTest(name):
                own = rfutils.check(self.file(name))
                self.assertTrue(own)
                self.assert_as_command(own, self.file(name))

    def test_a_folder_stands_for_its_files(self):
        with self.assertWarns(rfutils.Note) as noted:
            own = rfutils.check(self.folder)
        self.assertEqual("note: " + str(noted.warning), refusal("check", self.folder))
        for name in ("levels.csv", "utf16.csv"):
            self.assertIn(self.file(name), str(noted.warning))
        self.assert_as_command(own, self.folder)
        self.assertNotIn(self.file("notes.txt"), [found.file for found in own])

    def test_what_is_missing_or_a_list_is_a_finding_too(self):
        for name in ("missing.asc", "missing.csv", "missing", "-"):
            [found] = rfutils.check(name)
            self.assertEqual((found.file, found.line, found.column, found.severity, found.rule),
                             (name, None, None, "error", "file-unreadable"))
            self.assert_as_command([found], name)
        self.assertEqual(rfutils.check([]), [])

    def test_kinds_are_those_of_the_command(self):
        for kind in ("asc", "hdr", "bil", "clr", "tab", "catalogue", "setups", "recording"):
            with self.subTest(kind):
                self.assert_as_command(rfutils.check("levels.txt", kind=kind), "levels.txt", "--as", kind)
        with self.assertRaises(ValueError) as caught:
            rfutils.check("levels.txt", kind="foo")
        self.assertEqual("--as: " + str(caught.exception),
                         refusal("check", "levels.txt", "--as", "foo").removesuffix(" (see rfutils check --help)"))

    def test_rules_may_be_left_out(self):
        file = self.file("catalogue.json")
        names = [found.rule for found in rfutils.check(file)]
        self.assertGreater(len(set(names)), 1)
        own = rfutils.check(file, ignore=names[:1])
        self.assert_as_command(own, file, "--ignore", names[0])
        self.assertEqual(rfutils.check(file, ignore=names[0]), own)
        self.assertEqual(rfutils.check(file, ignore=names), [])
        with self.assertRaises(ValueError) as caught:
            rfutils.check(file, ignore=["foo"])
        self.assertEqual(str(caught.exception), 'there is no rule "foo"')
        with open(self.file(".rfutils-check"), "w", encoding="ascii") as output:
            output.write("# of catalogues\n" + names[0] + " *.json\n")
        self.assertEqual(rfutils.check(file), own)
        with open(self.file(".rfutils-check"), "a", encoding="ascii") as output:
            output.write("foo\n")
        with self.assertRaises(rfutils.InputError) as caught:
            rfutils.check(file)
        self.assertEqual((caught.exception.file, caught.exception.line), (self.file(".rfutils-check"), 3))
        self.assertEqual(str(caught.exception), refusal("check", file))

    def test_many_findings_end_in_their_number(self):
        own = [found for found in rfutils.check(self.file("hops.csv")) if found.rule == "sweep-line-skipped"]
        self.assertEqual([found.line for found in own], [*range(1, 201), None])
        self.assertEqual((own[-1].severity, own[-1].message), ("note", "50 more are not listed"))

    def test_rules_are_those_of_the_command(self):
        expected = [{"name": row.pop("rule"), **row} for row in answer("check", "--rules")]
        own = [{**rule._asdict(), "kinds": " ".join(rule.kinds) or "other files"} for rule in rfutils.rules()]
        self.assertEqual(own, expected)

    def test_nothing_is_printed(self):
        code = "import sys, rfutils; assert len(rfutils.check(sys.argv[1:], kind='setups')) > 1"
        names = ["setups.json", self.file("levels.csv"), "missing.json"]
        run = subprocess.run([sys.executable, "-c", code, *names], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        self.assertEqual((run.returncode, run.stdout), (0, b""))


if __name__ == "__main__":
    unittest.main()
