#!/usr/bin/env python3
"""Runs the blackboard program in two processes: check_blackboard.py WORK [EMULATOR] PROGRAM

WORK is a folder in which scratch folders may be made.
"""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

WORK, PROGRAM = pathlib.Path(sys.argv[1]), sys.argv[2:]
WORD = "needle"
GRANULARITY = 64 * 1024


def places(text):
    """What the reader must print: every line is told from the word on, up to 60 bytes of it."""
    lines, at = [], text.find(WORD)
    while at >= 0:
        excerpt = text[at:].split("\n")[0][:60]
        lines.append(f"line {text.count(chr(10), 0, at) + 1}, byte {at}: {excerpt}")
        at = text.find(WORD, at + 1)
    return lines


def hay(*offsets):
    """A text of 1 MB with the word at the given places."""
    text = list(("x" * 79 + "\n") * 13000)
    for offset in offsets:
        text[offset : offset + len(WORD)] = WORD
    return "".join(text)


class Blackboard(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir=WORK)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.board = f"jw32-board-{os.getpid()}"

    def start(self, *arguments):
        drive = {"JW32_DRIVE_C": str(self.folder / "drive_c")}
        return subprocess.Popen([*PROGRAM, *arguments], stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True, cwd=self.folder,
                                env=os.environ | drive)

    def end(self, process):
        out, err = process.communicate(timeout=60)
        return process.returncode, out.splitlines(), err.strip()

    def check(self, text, *more):
        (self.folder / "hay.txt").write_bytes(text.encode())
        reader = self.start("read", self.board)
        searcher = self.start("search", self.board, "hay.txt", WORD, *more)
        expected = places(text)
        self.assertEqual(self.end(reader), (0, expected, ""))
        self.assertEqual(self.end(searcher), (0, [
            f"Found    '{WORD}' {len(expected)} times in hay.txt", "Read     by another process"], ""))

    def test_finds_a_word_wherever_the_pieces_of_the_file_meet(self):
        ends = [2 * GRANULARITY - d for d in (0, 1, 3, len(WORD), 60, 260, 261, 320)]
        self.check(hay(0, *ends, *(end + 2 * GRANULARITY for end in ends), 13000 * 80 - 7), "128")

    def test_finds_it_in_a_file_smaller_than_a_piece(self):
        self.check(f"{WORD}\n\nno\na {WORD} in hay\n{WORD}{WORD}")

    def test_tells_what_is_wrong(self):
        (self.folder / "empty.txt").touch()
        for file, reason in [("none.txt", "(2)"), ("empty.txt", "with size 0")]:
            code, out, err = self.end(self.start("search", self.board, file, WORD))
            self.assertEqual((code, out), (1, []))
            self.assertRegex(err, f"^blackboard: cannot map {file}: .+")
            self.assertTrue(err.endswith(reason), err)
        code, out, err = self.end(self.start("search", self.board, "empty.txt", WORD, "64"))
        self.assertEqual((code, err), (1, "blackboard: '64' is not a piece's size: 128 to 1048576 KiB"))
        for word, status in [("serch", 2), ("--halp", 2), ("--help", 0)]:
            code, out, err = self.end(self.start(word))
            self.assertEqual((code, bool(out), bool(err)), (status, status == 0, status != 0))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
