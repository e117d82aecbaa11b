#!/usr/bin/env python3
"""The rooms of src/shell: which may include which, and how large their files and functions may grow."""
import pathlib
import re
import unittest

SHELL = pathlib.Path(__file__).resolve().parents[2] / "src" / "shell"
ROOMS = ["view", "list", "actions", "search", "app", "win32/gdi", "win32/system", "win32/controls", "win32/window"]
# What a view shows is nothing that the code of the system knows of.
UNKNOWN_TO_WIN32 = re.compile(r'#include "(index|search|content|analysis|duplicates)/|#include "shell/(search|analysis|duplicates)/')
MOST_LINES, MOST_FUNCTION_LINES, MOST_WINDOW_LINES = 500, 40, 1600


def sources(folder=SHELL):
    return sorted(p for p in folder.rglob("*") if p.suffix in (".h", ".cpp"))


def room_of(name):
    """The room of a path below src/shell, or None: the entry of the program stands above all of them."""
    return next((room for room in ROOMS if name.startswith(room + "/")), None)


def includes(path):
    return re.findall(r'#include "shell/([^"]+)"', path.read_text())


def functions(text):
    """Lines of each function whose name stands in the first column, to the brace that closes it."""
    begin, depth = None, 0
    for number, line in enumerate(text.splitlines()):
        if begin is None and re.match(r"(?!namespace|struct|class|enum|using|extern|static_assert)[A-Za-z].*\(", line):
            begin, depth = number, 0
        if begin is None:
            continue
        depth += line.count("{") - line.count("}")
        if depth == 0 and line.endswith(("}", ";")):
            if line.endswith("}"):
                yield number - begin + 1
            begin = None


class Functions(unittest.TestCase):
    def test_are_measured_from_their_name_to_their_brace(self):
        text = "int Declared(int a);\n\nint Long(int a,\n         int b) {\n  return a + b;\n}\n\nint Short() { return 1; }\n"
        self.assertEqual(list(functions(text + "void Next() {\n  Do();\n}\n")), [4, 1, 3])


class Rooms(unittest.TestCase):
    def test_every_file_has_a_room(self):
        homeless = [str(p.relative_to(SHELL)) for p in sources() if room_of(str(p.relative_to(SHELL))) is None]
        self.assertEqual(homeless, ["win32/main.cpp"])

    def test_a_room_includes_only_those_before_it(self):
        faults = []
        for path in sources():
            room = room_of(str(path.relative_to(SHELL)))
            for name in includes(path) if room else []:
                if ROOMS.index(room_of(name)) > ROOMS.index(room):
                    faults.append(f"{path.relative_to(SHELL)} includes {name}")
        self.assertEqual(faults, [])

    def test_no_file_includes_itself_by_way_of_others(self):
        graph = {str(p.relative_to(SHELL)): includes(p) for p in sources() if p.suffix == ".h"}
        done, faults = set(), []

        def walk(name, way):
            if name in way:
                faults.append(way[way.index(name):] + [name])
            elif name not in done:
                for other in graph.get(name, []):
                    walk(other, way + [name])
                done.add(name)

        for name in graph:
            walk(name, [])
        self.assertEqual(faults, [])

    def test_the_code_of_the_system_knows_no_view_and_no_setting(self):
        faults = []
        for path in sources(SHELL / "win32"):
            text = path.read_text()
            if UNKNOWN_TO_WIN32.search(text) or "CurrentWindowSettings" in text:
                faults.append(str(path.relative_to(SHELL)))
        self.assertEqual(faults, [])

    def test_a_header_is_kept_by_one_source(self):
        faults = []
        for header in (p for p in sources() if p.suffix == ".h"):
            name = f'#include "shell/{header.relative_to(SHELL)}"\n'
            keepers = [p.name for p in sources() if p.suffix == ".cpp" and p.read_text().startswith(name)]
            if len(keepers) > 1:
                faults.append((str(header.relative_to(SHELL)), keepers))
        self.assertEqual(faults, [])

    def test_files_and_functions_stay_short(self):
        faults = []
        for path in sources():
            text = path.read_text()
            if text.count("\n") > MOST_LINES:
                faults.append(f"{path.name}: {text.count(chr(10))} lines")
            faults += [f"{path.name}: a function of {lines}" for lines in functions(text) if lines > MOST_FUNCTION_LINES]
        self.assertEqual(faults, [])

    def test_the_pump_stays_thin(self):
        lines = sum(p.read_text().count("\n") for p in sources(SHELL / "win32" / "window"))
        self.assertLessEqual(lines, MOST_WINDOW_LINES)


if __name__ == "__main__":
    unittest.main()
