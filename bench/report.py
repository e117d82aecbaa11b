#!/usr/bin/env python3
"""Runs the benchmark programs and their peers, prints their tables, and keeps or compares records of them.

usage: report.py WORK [--record] [--compare [FILE.json]] [SUBJECT...] [COUNT...]
bench/run.sh builds what this needs, and explains the options. Only ratios from one run count, since machines are
shared and noisy.
"""
import os
import sys
from dataclasses import dataclass, field

import records
from figures import table_text
from subjects import SUBJECTS

DEFAULT_COUNTS = [1_000_000, 10_000_000]


@dataclass
class Options:
    subjects: list[str] = field(default_factory=list)
    counts: list[int] = field(default_factory=list)
    record: bool = False
    compare: bool = False
    file: str = ""


def parse(arguments):
    """The options, or None where an argument means nothing."""
    options = Options()
    for argument in arguments:
        if argument == "--record":
            options.record = True
        elif argument == "--compare":
            options.compare = True
        elif argument.endswith(".json") and not options.file:
            options.file = argument
        elif argument in SUBJECTS:
            options.subjects.append(argument)
        elif argument.isdigit():
            options.counts.append(int(argument))
        else:
            return None
    if options.file and (options.record or not options.compare or options.subjects or options.counts):
        return None
    return options


def run(work, options):
    """Runs the subjects and prints each table as soon as it is there."""
    tables = []
    for subject in options.subjects or SUBJECTS:
        for table in SUBJECTS[subject](work, options.counts or DEFAULT_COUNTS):
            tables.append(table)
            print(f"\n{table_text(table)}", flush=True)
    return tables


def print_comparison(record):
    """False where there is nothing to compare with."""
    text = records.comparison_text(record, records.read_records())
    print("\n" + (text or "no former record of these subjects on such a machine"))
    return text is not None


def main(work, arguments):
    options = parse(arguments)
    if options is None:
        print("usage: bench/run.sh [--record] [--compare [FILE.json]] [SUBJECT...] [COUNT...]", file=sys.stderr)
        return 2
    if options.file:
        return 0 if print_comparison(records.read_record(options.file)) else 1
    tables = run(os.path.abspath(work), options)
    record = records.make_record(tables, records.source())
    compared = not options.compare or print_comparison(record)
    if options.record:
        path = records.write_record(record, "\n\n".join(map(table_text, tables)))
        print(f"\nrecorded: {os.path.relpath(path)}")
    return 0 if compared else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
