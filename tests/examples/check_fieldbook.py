#!/usr/bin/env python3
"""Runs the field book program: check_fieldbook.py DATA WORK [EMULATOR] PROGRAM

DATA is the folder of the books that are shipped, WORK one in which scratch folders may be made. The
reports stand beside this file, so that every build is held against the same bytes.
"""
import cmath
import math
import os
import pathlib
import random
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
    (HEAD + "station A 60,5 10\n", 4, "'60,5' has a decimal comma: write 60.5"),
    (HEAD + "station A 6,0,5 10\n", 4, "'6,0,5' is not a number"),
    (HEAD + "station A 60 1" + "0" * 64 + "\n", 4, "too long for a number"),
    (HEAD + "station " + "A" * 65 + " 60 10\n", 4, "'A{30}...' is too long"),
    (HEAD + "tolerance 0.0030 5000.5\n", 4, "not a ratio"),
    (HEAD + "tolerance 0.0060 1:5000\n", 4, "60 seconds or more"),
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
    ("unit deg\n\x00\x01", 2, "not text"),
    (HEAD.encode("utf-16"), 1, "UTF-16"),
]


class Polygon:
    """A measured traverse of many stations, and its reduction by complex numbers in degrees."""

    def __init__(self, count):
        chance = random.Random(count)
        corners = [cmath.rect(chance.uniform(4000, 6000), 2 * math.pi * i / count)
                   for i in range(count)]
        # The real part goes to the north; a bearing grows to the east.
        legs = [corners[(i + 1) % count] - corners[i] for i in range(count)]
        turned = [math.degrees(cmath.phase(-legs[i - 1] / legs[i])) % 360 for i in range(count)]
        self.distances = [round(abs(leg), 3) for leg in legs]
        # Angles in hundredths of a second, each measured some seconds wrong.
        self.angles = [round(angle * 360000) + chance.randint(-500, 500) for angle in turned]
        self.bearing = round(math.degrees(cmath.phase(legs[0])) % 360 * 360000)
        self.reduce(count)

    def reduce(self, count):
        self.sum = sum(self.angles)
        self.missed = self.sum - (count - 2) * 180 * 360000
        bearing, ends = self.bearing / 360000, []
        for i, angle in enumerate(self.angles):
            if i > 0:
                bearing += 180 - (angle - self.missed / count) / 360000
            ends.append(cmath.rect(self.distances[i], math.radians(bearing)))
        length, miss = math.fsum(self.distances), sum(ends)
        self.ratio = length / abs(miss)
        self.rows, at = [], 1000 + 5000j
        for i in range(count + 1):
            self.rows.append(f"{i % count} {at.real:.3f} {at.imag:.3f}")
            if i < count:
                at += ends[i] - miss * self.distances[i] / length

    def book(self, unit, tolerance):
        def written(h):
            packed = f"{h // 360000}.{h // 6000 % 60:02}{h % 6000:04}"
            return packed if unit == "deg" else f"{h / 324000:.12f}"
        stations = "".join(f"station {i} {written(angle)} {distance:.3f}\n" for i, (angle, distance)
                           in enumerate(zip(self.angles, self.distances)))
        return (f"unit {unit}\nturns right\nstart 1000 5000\nbearing {written(self.bearing)}\n"
                f"{tolerance}{stations}")


def dms(h):
    return f"{h // 360000}\u00b0 {h // 6000 % 60:02}' {h % 6000 // 100:02}.{h % 100:02}\""


class FieldBook(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir=WORK)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name) / "books"
        self.folder.mkdir()

    def run_program(self, *arguments, **options):
        drive = {"JW32_DRIVE_C": str(self.folder.parent / "drive_c")}
        return subprocess.run(PROGRAM + [str(a) for a in arguments], cwd=self.folder,
                              encoding="utf-8", env=os.environ | drive, capture_output=True,
                              timeout=120, **options)

    def refused(self, books):
        """The messages of a run that must fail for each of the books and leave no report."""
        result = self.run_program(*books)
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertEqual(list(self.folder.rglob("*.report*")), [], "a part of a report was left")
        messages = result.stderr.replace("\\", "/").splitlines()
        self.assertEqual(len(messages), len(books), result.stderr)
        return messages

    def reduced(self, *books, parts=()):
        """The output of a run that must reduce all books and leave reports in the archive only.

        `parts` are files of reports that were half written before.
        """
        result = self.run_program(*books)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual([*self.folder.glob("*.report*"), *self.folder.rglob("*.part*")], [*parts])
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
                self.assertIn(f"Written  archive/{name}\nSize     {len(report)} bytes\n"
                              f"CRC-32   {zlib.crc32(report):08X}\n", output)

    def test_a_large_traverse_has_the_figures_of_another_computation_in_both_units(self):
        polygon = Polygon(1000)
        tolerances = {"deg": "tolerance 0.0001 1:1000000\n", "gon": ""}
        for unit, tolerance in tolerances.items():
            (self.folder / f"{unit}.txt").write_text(polygon.book(unit, tolerance))
        self.reduced("deg.txt", "gon.txt")
        for unit, tolerance in tolerances.items():
            report = self.archived(f"{unit}.report.txt").decode().splitlines()
            table = report[report.index("Legs as measured, coordinates adjusted by the compass rule, "
                                        "in metres") + 3:][:1001]
            # Of the closing row's five columns two are empty.
            rows = [" ".join(row.split()[:1] + row.split()[-2:]) for row in table]
            self.assertEqual(rows, polygon.rows)
            shown = dms if unit == "deg" else lambda h: f"{h / 324000:.5f}"
            lines = "\n".join(report)
            for name, value in {"Sum of the angles": polygon.sum, "It should be": 998 * 180 * 360000,
                                "Angular misclosure": polygon.missed}.items():
                self.assertRegex(lines, f"{name} +{shown(value)}\n")
            self.assertRegex(lines, f"Relative precision +1:{int(polygon.ratio)}\n")
            self.assertEqual(report[-1], "Both misclosures exceed the tolerance." if tolerance else
                             "Both misclosures are within the tolerance.")

    def test_a_pipe_is_read_to_its_end_and_keeps_no_report(self):
        names = ["-"] if len(PROGRAM) > 1 else ["-", "/dev/stdin", "/dev/fd/0"]
        for name in names:
            with self.subTest(name):
                result = self.run_program(name, input=HEAD + TRIANGLE)
                self.assertEqual((result.returncode, result.stderr), (0, ""))
                self.assertIn("Both misclosures are within", result.stdout)
                self.assertEqual(list(self.folder.iterdir()), [])

    def test_the_archive_keeps_what_it_has(self):
        book = self.folder / "meadow.txt"
        book.write_text(HEAD + TRIANGLE)
        self.reduced("meadow.txt")
        first = self.archived("meadow.report.txt")
        book.write_text("title Another\n" + HEAD + TRIANGLE)
        # What a program that was killed leaves behind is in nobody's way.
        part = self.folder / "archive" / "meadow.report.txt.part"
        part.write_text("half a rep")
        output = self.reduced("./meadow.txt", book, parts=[part])
        self.assertEqual(part.read_text(), "half a rep")
        self.assertIn("  ./archive/meadow.report-2.txt\n", output)
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
            (self.folder / f"{number}.txt").write_bytes(
                text if isinstance(text, bytes) else text.encode())
        messages = self.refused([f"{number}.txt" for number in range(len(BROKEN))])
        for number, (message, (_, line, reason)) in enumerate(zip(messages, BROKEN)):
            with self.subTest(reason):
                self.assertRegex(message, f"^fieldbook: {number}.txt, line {line}: .*{reason}")

    def test_what_is_no_book_is_refused_with_the_reason(self):
        (self.folder / "directory").mkdir()
        with open(self.folder / "large.txt", "wb") as large:
            large.truncate((64 << 20) + 1)
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
        self.assertIn("a file has that name", self.refused(["book.txt"])[0])
        self.assertEqual((self.folder / "archive").read_text(), "mine")

    def test_it_tells_how_to_use_it(self):
        for words, message in [((), "usage: fieldbook BOOK"), (("--halp",), "no option '--halp'")]:
            result = self.run_program(*words)
            self.assertEqual((result.returncode, result.stdout), (2, ""))
            self.assertIn(message, result.stderr)
        result = self.run_program("--help")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("usage: fieldbook BOOK", result.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
