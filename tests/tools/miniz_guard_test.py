#!/usr/bin/env python3
"""The copy of miniz that is built (cmake/guard_miniz.cmake): made from the release that its edits were written for, and no other."""
import pathlib
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGE = ROOT / "build/npm/node_modules/miniz.c"


class Copy(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.source, self.made = pathlib.Path(place.name, "from"), pathlib.Path(place.name, "to")
        self.source.mkdir()
        for name in ("miniz.c", "miniz.h"):
            (self.source / name).write_bytes((PACKAGE / name).read_bytes())

    def make(self):
        return subprocess.run(["cmake", f"-DFROM={self.source}", f"-DTO={self.made}", "-P", ROOT / "cmake/guard_miniz.cmake"],
                              capture_output=True, text=True, check=False)

    def test_differs_from_the_release_by_the_edits_alone(self):
        self.assertEqual(self.make().returncode, 0)
        before, after = ((folder / "miniz.c").read_text().splitlines() for folder in (self.source, self.made))
        lost = [line.strip() for line in before if line not in after]
        self.assertEqual(len(after) - len(before), 18)
        self.assertEqual(sorted(set(lost)), ["if ((cdir_ofs + (mz_uint64)cdir_size) > pZip->m_archive_size)",
                                             "if ((cur_file_ofs + file_stat.m_comp_size) > pZip->m_archive_size)"])
        self.assertTrue((self.made / "miniz.h").read_text().endswith((self.source / "miniz.h").read_text()))

    def test_is_not_made_of_another_source(self):
        for name in ("miniz.c", "miniz.h"):
            with self.subTest(name):
                path = self.source / name
                path.write_bytes(path.read_bytes() + b"\n")
                done = self.make()
                self.assertNotEqual(done.returncode, 0)
                self.assertIn("is not that of miniz 3.1.0", done.stderr)
                self.assertFalse((self.made / "miniz.c").exists())


if __name__ == "__main__":
    unittest.main()
