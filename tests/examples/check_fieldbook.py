#!/usr/bin/env python3
"""Runs the field book program: check_fieldbook.py DATA WORK [EMULATOR] PROGRAM

DATA is the folder of the books that are shipped, WORK one in which scratch folders may be made. The
reports stand beside this file, so that every build is held against the same bytes.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import zlib

HERE = pathlib.Path(__file__).resolve().parent
DATA, WORK = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
PROGRAM = sys.argv[3:]

HEAD = "unit deg\nstart 0 0\nbearing 0\n"
TRIANGLE = "station A 60 10\nstation B 60 10\nstation C 60 10\n"

# A book, and the line and the reason that the program must name.
BROKEN = [
    ("", 1, "the file is empty"),
    ("# nothing\n", 1, "without a 'unit' line"),
    ("unit deg\nbearing 0\n" + TRIANGLE, 5, "without a 'start' line"),
    ("unit deg\nstart 0 0\n" + TRIANGLE, 5, "without a 'bearing' line"),
    ("unit miles\n", 1, "'miles' is not a unit"),
    ("bearing 10\nunit deg\n", 1, "before the unit is known"),
    (HEAD + "unit gon\n", 4, "'unit' stands in the book already"),
    (HEAD + "turns round\n", 4, "'round' is not a direction"),
    (HEAD + "\r\nstaton A 60 10\n", 5, "'staton' is not a keyword"),
    (HEAD + "station A 60\n", 4, "3 values, not 2"),
    (HEAD + "station A 60 10 20\n", 4, "3 values, not 4"),
    (HEAD + "station A 60,5 10\n", 4, "'60,5' is not a number"),
    (HEAD + "station A nan 10\n", 4, "'nan' is not a number"),
    (HEAD + "station A 12.7530 10\n", 4, "75 minutes"),
    (HEAD + "station A 12.3060 10\n", 4, "60 seconds or more"),
    (HEAD + "station A 360 10\n", 4, "outside the circle"),
    ("unit gon\nbearing 400.0\n", 2, "outside the circle"),
    (HEAD + "station A 0 10\n", 4, "an angle of 0"),
    (HEAD + "station A 60 -1\n", 4, "not above 0"),
    (HEAD + "station A 60 1e99\n", 4, "too large"),
    (HEAD + TRIANGLE + "station B 60 10\n", 7, "stands in line 5 already"),
    (HEAD + "station A 60 10\n", 4, "with 1 stations"),
    (HEAD + "".join(f"station {i} 60 10\n" for i in range(91)), 94, "at most 90 stations"),
    ("unit deg\n\x00\x01", 2, "not text"),
]


class FieldBook(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir=WORK)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name) / "books"
        self.folder.mkdir()

    def run_program(self, *arguments):
        drive = {"JW32_DRIVE_C": str(self.folder.parent / "drive_c")}
        return subprocess.run(PROGRAM + [str(a) for a in arguments], cwd=self.folder, text=True,
                              env=os.environ | drive, capture_output=True, timeout=120)

    def refused(self, books):
        """The messages of a run that must fail for each of the books and leave no report."""
        result = self.run_program(*books)
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertEqual(list(self.folder.rglob("*.report*")), [])
        messages = result.stderr.replace("\\", "/").splitlines()
        self.assertEqual(len(messages), len(books), result.stderr)
        return messages

    def reduced(self, *books):
        """The output of a run that must reduce all books and leave reports in the archive only."""
        result = self.run_program(*books)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(list(self.folder.glob("*.report*")), [], "a report was not moved")
        return result.stdout.replace("\\", "/")

    def archived(self, name):
        return (self.folder / "archive" / name).read_bytes()

    def test_reports_are_the_same_bytes_in_every_build(self):
        books = [DATA / "closed_traverse.txt", DATA / "closed_traverse_gon.txt",
                 HERE / "pentagon.txt"]
        for book in books:
            shutil.copy(book, self.folder)
        output = self.reduced(*(book.name for book in books))
        for book in books:
            with self.subTest(book.name):
                name = f"{book.stem}.report.txt"
                report = self.archived(name)
                self.assertEqual(report, (HERE / name).read_bytes())
                self.assertIn(report.decode().replace("\r\n", "\n"), output)
                self.assertIn(f"CRC-32   {zlib.crc32(report):08X}\nMoved    to archive/{name}\n",
                              output)

    def test_the_archive_keeps_what_it_has(self):
        book = self.folder / "meadow.txt"
        book.write_text(HEAD + TRIANGLE)
        self.reduced("meadow.txt")
        first = self.archived("meadow.report.txt")
        book.write_text("title Another\n" + HEAD + TRIANGLE)
        output = self.reduced("./meadow.txt", book)
        self.assertIn("to ./archive/meadow.report-2.txt\n", output)
        self.assertIn("/archive/meadow.report-3.txt\n", output)
        self.assertEqual(self.archived("meadow.report.txt"), first)
        self.assertNotEqual(self.archived("meadow.report-2.txt"), first)
        self.assertEqual(self.archived("meadow.report-2.txt"), self.archived("meadow.report-3.txt"))

    def test_line_ends_and_marks_of_other_editors_do_not_matter(self):
        text = HEAD + TRIANGLE
        with_marks = ("\ufeff" + text).rstrip().replace("\n", "\r\n")
        for folder, book in (("plain", text), ("edited", with_marks)):
            (self.folder / folder).mkdir()
            (self.folder / folder / "book").write_bytes(book.encode())
        self.reduced("plain/book", "edited/book")
        plain, edited = (next(self.folder.glob(f"{folder}/archive/book.report.txt")).read_bytes()
                         for folder in ("plain", "edited"))
        self.assertEqual(plain, edited)

    def test_broken_books_are_refused_with_line_and_reason(self):
        for number, (text, _, _) in enumerate(BROKEN):
            (self.folder / f"{number}.txt").write_bytes(text.encode())
        messages = self.refused([f"{number}.txt" for number in range(len(BROKEN))])
        for number, (message, (_, line, reason)) in enumerate(zip(messages, BROKEN)):
            with self.subTest(reason):
                self.assertRegex(message, f"^fieldbook: {number}.txt, line {line}: .*{reason}")

    def test_what_is_no_book_is_refused_with_the_reason(self):
        (self.folder / "directory").mkdir()
        (self.folder / "large.txt").write_bytes(b"#" * (1 << 20) + b"\n")
        cases = {"missing.txt": "(code 2)", "missing/book.txt": "(code 3)",
                 "directory": "is a directory", "directory/": "is a directory",
                 "large.txt": "is too large"}
        for message, (name, reason) in zip(self.refused(list(cases)), cases.items()):
            with self.subTest(name):
                self.assertIn(f"'{name}'", message)
                self.assertIn(reason, message)

    def test_one_broken_book_does_not_keep_the_next_from_being_reduced(self):
        (self.folder / "good.txt").write_text(HEAD + TRIANGLE)
        self.assertEqual(self.run_program("missing.txt", "good.txt").returncode, 1)
        self.assertIn(b"Closed traverse", self.archived("good.report.txt"))

    def test_a_file_in_the_place_of_the_archive_is_left_alone(self):
        (self.folder / "book.txt").write_text(HEAD + TRIANGLE)
        (self.folder / "archive").write_text("mine")
        result = self.run_program("book.txt")
        self.assertEqual(result.returncode, 1)
        self.assertIn("a file has that name", result.stderr)
        self.assertEqual((self.folder / "archive").read_text(), "mine")

    def test_without_a_book_it_tells_how_to_use_it(self):
        result = self.run_program()
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertIn("usage: fieldbook BOOK", result.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
