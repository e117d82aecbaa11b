"""A layer of src in rooms, which are folders: what it asks of each file's includes and size."""
import pathlib
import re

SRC = pathlib.Path(__file__).resolve().parents[2] / "src"


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


class Layer:
    """The files below `folder`, whose rooms are given from the lowest up. A file includes only rooms up to its own."""

    def __init__(self, folder, rooms):
        self.folder, self.rooms = pathlib.Path(folder), rooms

    def sources(self, below="."):
        return sorted(p for p in (self.folder / below).rglob("*") if p.suffix in (".h", ".cpp"))

    def name(self, path):
        return str(path.relative_to(self.folder))

    def room_of(self, name):
        return next((room for room in self.rooms if name.startswith(room + "/")), None)

    def includes(self, path):
        """Names of this layer's headers that the file includes, below `folder`."""
        return re.findall(rf'#include "{self.folder.name}/([^"]+)"', path.read_text())

    def homeless(self):
        return [self.name(p) for p in self.sources() if self.room_of(self.name(p)) is None]

    def upward(self):
        faults = []
        for path in self.sources():
            room = self.room_of(self.name(path))
            for name in self.includes(path) if room else []:
                other = self.room_of(name)
                if other is None or self.rooms.index(other) > self.rooms.index(room):
                    faults.append(f"{self.name(path)} includes {name}")
        return faults

    def circles(self):
        """Ways from a header back to itself."""
        graph = {self.name(p): self.includes(p) for p in self.sources() if p.suffix == ".h"}
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
        return faults

    def headers_of_several(self):
        """Headers that more than one source begins with, as its own."""
        faults = []
        for header in (p for p in self.sources() if p.suffix == ".h"):
            first = f'#include "{self.folder.name}/{self.name(header)}"\n'
            keepers = [p.name for p in self.sources() if p.suffix == ".cpp" and p.read_text().startswith(first)]
            if len(keepers) > 1:
                faults.append((self.name(header), keepers))
        return faults

    def too_long(self, most_lines, most_function_lines):
        faults = []
        for path in self.sources():
            text = path.read_text()
            if text.count("\n") > most_lines:
                faults.append(f"{path.name}: {text.count(chr(10))} lines")
            faults += [f"{path.name}: a function of {lines}" for lines in functions(text) if lines > most_function_lines]
        return faults
