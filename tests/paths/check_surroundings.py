#!/usr/bin/env python3
"""Starts a program in surroundings of every kind: check_surroundings.py NEWCOMER"""
import os
import subprocess
import sys
import tempfile
import unittest

GOOD = "0 0 0 C:\\Newcomer"


class Surroundings(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.root = os.path.realpath(self.folder.name)
        os.mkdir(self.root + "/home")

    def start(self, **variables):
        program = subprocess.run([sys.argv[1]], env=variables, cwd=self.root, timeout=60,
                                 capture_output=True, text=True)
        self.assertEqual((program.returncode, program.stderr), (0, ""), variables)
        return program.stdout.rstrip("\n")

    def test_variables_of_the_temporary_folder_do_not_count(self):
        for name in "TMP", "TEMP", "TMPDIR":
            for value in "Z:\\tmp", "/nonexistent":
                self.assertEqual(self.start(HOME=self.root + "/home", **{name: value}), GOOD)

    def test_c_lies_where_its_variables_lead(self):
        os.symlink("home", self.root + "/link")
        self.assertEqual(self.start(HOME=self.root + "/link"), GOOD)
        drive = "home/.local/share/jw32/drive_c"
        self.assertTrue(os.path.exists(f"{self.root}/{drive}/newcomer/made"))
        for n, form in enumerate(("{}/{}/", "{}//{}", "{}/./{}", "{}/home/../{}", "{}/link/{}")):
            with self.subTest(form):
                folder = form.format(self.root, f"c{n}")
                self.assertEqual(self.start(JW32_DRIVE_C=folder), GOOD)
                self.assertTrue(os.path.exists(folder + "/newcomer/made"))
        self.assertEqual(self.start(JW32_DRIVE_C="relative"), GOOD)
        self.assertTrue(os.path.exists(self.root + "/relative/newcomer/made"))

    def test_a_c_that_cannot_be_made_is_missing(self):
        open(self.root + "/file", "w").close()
        here = "Z:" + self.root.replace("/", "\\")
        self.assertEqual(self.start(JW32_DRIVE_C=self.root + "/file/c"), "3 3 3 " + here)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
