#!/usr/bin/env python3
"""Each portable source has a file of tests of its name (tools/untested_sources.py), so that its tests are found at once."""
import os
import pathlib
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools"))

import untested_sources  # noqa: E402

LAYERS = ("canvas", "shell", "cli")
EXCEPTIONS = {
    "cli/main.cpp": "hands the arguments of the process to RunConsole",
    "shell/app/wiring.cpp": "joins the objects of the program, of which a process has one: the tests of the window run it",
}


def paths(*names):
    return [pathlib.PurePosixPath(name) for name in names]


class Listing(unittest.TestCase):
    def test_names_sources_without_a_test_of_their_name(self):
        sources = paths("shell/view/tag.cpp", "shell/view/bar.cpp")
        self.assertEqual(untested_sources.untested(sources, paths("shell/view/tag_test.cpp", "shell/view/bars_test.cpp")),
                         paths("shell/view/bar.cpp"))

    def test_takes_a_test_of_another_folder_of_the_layer_and_of_no_other_layer(self):
        self.assertEqual(untested_sources.untested(paths("cli/find.cpp"), paths("cli/posix/find_test.cpp")), [])
        self.assertEqual(untested_sources.untested(paths("cli/find.cpp"), paths("shell/find_test.cpp")),
                         paths("cli/find.cpp"))

    def test_leaves_out_what_only_windows_has(self):
        self.assertEqual(untested_sources.untested(paths("shell/win32/window/pump.cpp"), []), [])


class Sources(unittest.TestCase):
    def test_have_a_test_of_their_name_or_a_reason(self):
        self.assertEqual([source for source in untested_sources.untested_of(LAYERS) if source not in EXCEPTIONS], [])

    def test_with_a_reason_need_it(self):
        without = untested_sources.untested_of(LAYERS)
        self.assertEqual([source for source in EXCEPTIONS if source not in without], [])


if __name__ == "__main__":
    unittest.main()
