#!/usr/bin/env python3
"""Tests of the sample library. Run: python3 -m unittest discover -s samples -p 'test_*.py'"""
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
sys.dont_write_bytecode = True

from documents import SheetValues, rtf_text  # noqa: E402
from layout import visual, wrap  # noqa: E402
from source import SourceError, read_source  # noqa: E402


def run(*arguments):
    return subprocess.run([sys.executable, str(HERE / "make_samples.py"), *map(str, arguments)],
                          capture_output=True, text=True)


class Rules(unittest.TestCase):
    def test_formulas(self):
        values = SheetValues([["", "2", "3.5"], ["x", "=B1+C1", "=SUM(B1:C1)*2"], ["", "=AVERAGE(B1:B2)", "=B9-1"]])
        for formula, shown in (("=B1", "2"), ("=B2", "5.50"), ("=C2", "11"), ("=B3", "3.75"), ("=C3", "-1"),
                               ("=SUM(A1:C2)", "22"), ("12000", "12,000"), ("0.06", "0.06"), ("[Date]", "[Date]")):
            self.assertEqual(values.shown(formula), shown, formula)
        with self.assertRaises(SourceError):
            values.shown("=open(1)")

    def test_rtf_keeps_every_script(self):
        for text, coded in (("a{b}\\", "a\\{b\\}\\\\"), ("é", "\\u233?"), ("請", "\\u-30005?"),
                            ("\U0001f600", "\\u-10179?\\u-8704?")):
            self.assertEqual(rtf_text(text), coded)

    def test_lines(self):
        self.assertEqual(wrap("aa bb cc", 5, len), ["aa bb", "cc"])
        self.assertEqual(wrap("toolongword x", 5, len), ["toolongword", "x"])
        self.assertEqual(visual("אב (גד)"), "(דג) בא")

    def test_faults_in_a_source_are_placed(self):
        for text in ("text", "=== A.swt, 2020-01-01 10:00, #000000", "== F\n=== A.doc, 2020-01-01 10:00, #000000\nx",
                     "== F\n=== A.swt, 2020-13-01 10:00, #000000\nx", "== F\n=== A.swt, 2020-01-01 10:00, #000000\n@what",
                     "== F\n=== A.swt, 2020-01-01 10:00, #000000\n"):
            with tempfile.TemporaryDirectory() as folder, self.assertRaisesRegex(SourceError, "bad.txt"):
                path = Path(folder) / "bad.txt"
                path.write_text(text)
                read_source(path)


class Library(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory()
        cls.root = Path(cls.temporary.name) / "Templates"
        result = run(cls.root)
        assert result.returncode == 0, result.stderr
        cls.files = [path for path in cls.root.rglob("*") if path.is_file()]
        cls.templates = [path for path in cls.files if path.suffix in (".swt", ".ccw", ".prt", ".pdf", ".mst")]

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    def test_every_sub_folder_can_be_found(self):
        # The browser's scan stops at "Previews", so what sorts after it would be lost.
        for previews in self.root.rglob("Previews"):
            for sibling in previews.parent.iterdir():
                if sibling.is_dir():
                    self.assertLessEqual(sibling.name.lower(), "previews", sibling)

    def test_previews_belong_to_templates(self):
        pictures = {path.relative_to(self.root) for path in self.files if path.parent.name == "Previews"}
        wanted = {path.relative_to(self.root).parent / "Previews" / (path.stem + ".jpg") for path in self.templates}
        self.assertEqual(pictures - wanted, set())
        self.assertEqual(len(wanted - pictures), 3)

    def test_pdf_files_have_a_true_table_of_places(self):
        for path in self.templates:
            if path.suffix == ".pdf":
                data = path.read_bytes()
                start = int(re.search(rb"startxref\n(\d+)", data)[1])
                places = re.findall(rb"(\d{10}) 00000 n", data[start:])
                for key, place in enumerate(places, 1):
                    self.assertTrue(data[int(place):].startswith(b"%d 0 obj" % key), f"{path.name} {key}")

    def test_is_small_and_dated(self):
        self.assertLess(sum(path.stat().st_size for path in self.files), 4 << 20)
        self.assertGreater(len({path.stat().st_mtime for path in self.templates}), len(self.templates) * 0.8)

    def test_second_run_mends_and_keeps_what_others_wrote(self):
        before = {path: path.read_bytes() for path in self.files}
        self.assertIn("up to date", run(self.root).stdout)
        own = self.root / "Finance" / "Mine.swt"
        own.write_text("mine")
        (self.root / "NF.jpg").unlink()
        self.assertEqual(run(self.root).returncode, 0)
        self.assertEqual(own.read_text(), "mine")
        own.unlink()
        self.assertEqual({path: path.read_bytes() for path in before}, before)

    def test_refuses_a_folder_that_it_did_not_make(self):
        with tempfile.TemporaryDirectory() as folder:
            (Path(folder) / "letter.txt").write_text("mine")
            result = run(folder)
            self.assertEqual(result.returncode, 1)
            self.assertIn("not made here", result.stderr)
            self.assertEqual([path.name for path in Path(folder).iterdir()], ["letter.txt"])


if __name__ == "__main__":
    unittest.main()
