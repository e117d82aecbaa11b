#!/usr/bin/env python3
"""Lists portable sources without a file of tests that has their name, as tests/<layer>/.../<name>_test.cpp.

usage: tools/untested_sources.py [LAYER...]
"""
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]


def untested(sources, tests):
    """Of paths below src and tests: the sources of which no test of the same layer has the name."""
    names = {(test.parts[0], test.name) for test in tests}
    return [source for source in sources
            if "win32" not in source.parts and (source.parts[0], source.stem + "_test.cpp") not in names]


def files_below(folder):
    return sorted(path.relative_to(ROOT / folder) for path in (ROOT / folder).rglob("*.cpp"))


def untested_of(layers):
    return [source.as_posix() for source in untested(files_below("src"), files_below("tests"))
            if not layers or source.parts[0] in layers]


if __name__ == "__main__":
    print("\n".join(untested_of(sys.argv[1:])))
