#!/usr/bin/env python3
"""The rooms of the layers that have some: which may include which, and how large their files and functions may grow."""
import pathlib
import re
import tempfile
import unittest

import rooms

SHELL = rooms.Layer(rooms.SRC / "shell",
                    ["view", "list", "actions", "search", "settings", "app", "win32/gdi", "win32/system", "win32/controls", "win32/window"])
INDEX = rooms.Layer(rooms.SRC / "index", ["device", "tables", "follow", "build", "engine", "life"])
SEARCH = rooms.Layer(rooms.SRC / "search", ["query", "scan", "results", "attributes", "filter", "sort"])
CONTENT = rooms.Layer(rooms.SRC / "content", ["match", "archive", "settings", "run"])
ENTRIES = {SHELL: ["win32/main.cpp"]}  # stand above all rooms
# What a view shows is nothing that the code of the system knows of.
UNKNOWN_TO_WIN32 = re.compile(r'#include "(index|search|content|analysis|duplicates)/|#include "shell/(search|analysis|duplicates)/')
# What loses wakeups on Windows (docs/decisions/0021): a wait of an atomic names the value it waits on.
LOSES_WAKEUPS = re.compile(r'#include <(semaphore|latch|barrier|stop_token)>|std::jthread|\.wait\((\d+|true|false|nullptr)\)')
MOST_LINES, MOST_FUNCTION_LINES, MOST_WINDOW_LINES = 500, 40, 1600


class Functions(unittest.TestCase):
    def test_are_measured_from_their_name_to_their_brace(self):
        text = "int Declared(int a);\n\nint Long(int a,\n         int b) {\n  return a + b;\n}\n\nint Short() { return 1; }\n"
        self.assertEqual(list(rooms.functions(text + "void Next() {\n  Do();\n}\n")), [4, 1, 3])


class MadeUp(unittest.TestCase):
    """A layer with every fault there is."""

    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        folder = pathlib.Path(place.name) / "made"
        files = {"stray.h": "", "low/a.h": '#include "made/high/b.h"\n', "high/b.h": '#include "made/low/a.h"\n',
                 "low/one.cpp": '#include "made/low/a.h"\n', "low/two.cpp": '#include "made/low/a.h"\n',
                 "high/c.cpp": '#include "made/stray.h"\nint Long() {\n  return 1;\n}\n'}
        for name, text in files.items():
            (folder / name).parent.mkdir(parents=True, exist_ok=True)
            (folder / name).write_text(text)
        self.layer = rooms.Layer(folder, ["low", "high"])

    def test_is_found_out(self):
        self.assertEqual(self.layer.homeless(), ["stray.h"])
        self.assertEqual(self.layer.upward(), ["high/c.cpp includes stray.h", "low/a.h includes high/b.h"])
        self.assertEqual(self.layer.circles(), [["high/b.h", "low/a.h", "high/b.h"]])
        self.assertEqual(self.layer.headers_of_several(), [("low/a.h", ["one.cpp", "two.cpp"])])
        self.assertEqual(self.layer.too_long(3, 2), ["c.cpp: 4 lines", "c.cpp: a function of 3"])


class Waits(unittest.TestCase):
    def test_are_found_out(self):
        for text in ("#include <semaphore>", "#include <latch>", "calls.wait(0);", "isDone.wait(false);"):
            self.assertRegex(text, LOSES_WAKEUPS)
        self.assertNotRegex("changed_.wait(lock);", LOSES_WAKEUPS)

    def test_lose_no_wakeup(self):
        faults = [str(p) for layer in ("src", "tests", "fuzz", "bench") for p in sorted((rooms.SRC.parent / layer).rglob("*"))
                  if p.suffix in (".h", ".cpp") and LOSES_WAKEUPS.search(p.read_text())]
        self.assertEqual(faults, [])


class Rooms(unittest.TestCase):
    def of_all(self, ask, wanted=lambda layer: []):
        for layer in (SHELL, INDEX, SEARCH, CONTENT):
            with self.subTest(layer.folder.name):
                self.assertNotEqual(layer.sources(), [])
                self.assertEqual(ask(layer), wanted(layer))

    def test_every_file_has_a_room(self):
        self.of_all(rooms.Layer.homeless, lambda layer: ENTRIES.get(layer, []))

    def test_a_room_includes_only_those_before_it(self):
        self.of_all(rooms.Layer.upward)

    def test_no_file_includes_itself_by_way_of_others(self):
        self.of_all(rooms.Layer.circles)

    def test_a_header_is_kept_by_one_source(self):
        self.of_all(rooms.Layer.headers_of_several)

    def test_files_and_functions_stay_short(self):
        self.of_all(lambda layer: layer.too_long(MOST_LINES, MOST_FUNCTION_LINES))

    def test_the_code_of_the_system_knows_no_view_and_no_setting(self):
        faults = []
        for path in SHELL.sources("win32"):
            text = path.read_text()
            if UNKNOWN_TO_WIN32.search(text) or "CurrentWindowSettings" in text:
                faults.append(SHELL.name(path))
        self.assertEqual(faults, [])

    def test_the_pump_stays_thin(self):
        lines = sum(p.read_text().count("\n") for p in SHELL.sources("win32/window"))
        self.assertLessEqual(lines, MOST_WINDOW_LINES)


if __name__ == "__main__":
    unittest.main()
