#!/usr/bin/env python3
"""Compares the variables that live with the process with their table in docs/architecture.md.

usage: tools/process_state.py posix|win32 BUILD

Reads the archives of the layers in BUILD, and lists what lies in a section that the program may write: variables of
a namespace, static members, static variables of functions and those of a thread. Fails on a variable without a row,
on a row whose variable is gone, and on a row that names a wrong file.
"""
import pathlib
import re
import subprocess
import sys
from typing import NamedTuple, Optional

ROOT = pathlib.Path(__file__).resolve().parents[1]
LAYERS = ("platform", "config", "canvas", "index", "search", "content", "shell", "cli")
HEADING = "## State that lives with the process"
NM = {"posix": "nm", "win32": "x86_64-w64-mingw32-nm"}
# What a compiler or a sanitizer adds, guards of static variables, and types' own data.
NOISE = re.compile(r"__|DW\.ref|_ZG|_ZT[ISV]|\.")
WRITABLE = re.compile(r"\.(data|bss|tdata|tbss|tls)(?!\.rel\.ro)([.$]|$)")


class Variable(NamedTuple):
    name: str            # without namespaces and parameters: "Engine::engine"
    file: Optional[str]  # the source it belongs to, without its ending; None where any source may name it


class Row(NamedTuple):
    names: tuple
    where: str  # a path below src

    def systems(self):
        """The builds that have the row's variables."""
        return {system for system in NM if f"/{system}/" in self.where} or set(NM)


def short_name(demangled):
    """The name as the table has it, or None where the variable is a library's."""
    name = demangled.replace("(anonymous namespace)", "").replace("[abi:cxx11]", "")
    while name != (name := re.sub(r"\([^()]*\)( const)?", "", name)):
        pass
    if name.startswith("quilmark::"):
        return name.replace("quilmark::", "").lstrip(":").replace("::::", "::")
    return None if "::" in name else name


def writable_symbols(listing):
    """Pairs of a mangled name and the source of those in a listing of `nm -f sysv` that may be written.

    A variable of a thread is emulated on Windows, and clang takes a struct apart into NAME.0, NAME.1.
    """
    source = None
    for line in listing.splitlines():
        header = re.match(r"Symbols from .*\[(.+?)\.cpp\.o(bj)?\]:", line)
        if header:
            source = header[1]
        fields = [field.strip() for field in line.split("|")]
        if len(fields) != 7 or not WRITABLE.match(fields[6]):
            continue
        name = re.sub(r"\.\d+$", "", re.sub(r"^__emutls_[vt]\.", "", fields[0]))
        if not NOISE.match(name):
            yield name, source if fields[2].islower() else None


def demangled(names):
    said = subprocess.run(["c++filt"], input="\n".join(names), capture_output=True, text=True, check=True).stdout
    return said.splitlines()


def variables_of(listing):
    symbols = sorted(set(writable_symbols(listing)), key=lambda symbol: (symbol[0], symbol[1] or ""))
    names = demangled([name for name, _ in symbols])
    found = {Variable(short_name(name), source) for name, (_, source) in zip(names, symbols)}
    return {variable for variable in found if variable.name is not None}


def rows_of(document):
    """The rows of the table below HEADING. Raises ValueError where there is none."""
    _, heading, text = document.partition(HEADING + "\n")
    if not heading:
        raise ValueError(f"no section '{HEADING}'")
    rows = []
    for line in text.split("\n## ")[0].splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        if line.startswith("|") and len(cells) == 4 and (names := re.findall(r"`([^`]+)`", cells[0])):
            rows.append(Row(tuple(names), cells[1].strip("`")))
    if not rows:
        raise ValueError(f"no table below '{HEADING}'")
    return rows


def is_named_by(variable, row):
    return variable.name in row.names and variable.file in (None, pathlib.PurePath(row.where).stem)


def faults_between(variables, rows, system):
    """What is wrong with the table, a sentence each, as seen by the build of one system."""
    here = [row for row in rows if system in row.systems()]
    faults = []
    for variable in sorted(variables, key=str):
        if not any(is_named_by(variable, row) for row in here):
            faults.append(f"`{variable.name}`" + (f" of {variable.file}.cpp" if variable.file else "") + " has no row")
    for row in here:
        for name in row.names:
            if not any(variable.name == name and is_named_by(variable, row) for variable in variables):
                faults.append(f"`{name}` has a row, and {row.where} no such variable")
    return faults


def misplaced(rows, read):
    """Rows whose file is not there or does not hold the name. `read` gives the text of a path below src, or None."""
    faults = []
    for row in rows:
        text = read(row.where)
        for name in row.names:
            if text is None or not re.search(rf"\b{name.split('::')[-1]}\b", text):
                faults.append(f"`{name}` does not stand in src/{row.where}")
    return faults


def source_text(path):
    file = ROOT / "src" / path
    return file.read_text(encoding="utf-8") if file.is_file() else None


def main(arguments):
    if len(arguments) != 2 or arguments[0] not in NM:
        sys.exit(__doc__.split("\n\n")[1])
    system, build = arguments
    archives = [f"{build}/libquilmark_{layer}.a" for layer in LAYERS]
    listing = subprocess.run([NM[system], "-f", "sysv", *archives], capture_output=True, text=True, check=True).stdout
    rows = rows_of((ROOT / "docs" / "architecture.md").read_text(encoding="utf-8"))
    variables = variables_of(listing)
    faults = faults_between(variables, rows, system) + misplaced(rows, source_text)
    print("\n".join(faults) or f"{len(variables)} variables, each with its row")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main(sys.argv[1:])
