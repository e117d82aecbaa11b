#!/usr/bin/env python3
"""Writes src/platform/fold_table.cpp from UnicodeData.txt.

    tools/make_fold_table.py [UnicodeData.txt] > src/platform/fold_table.cpp

The file is part of Debian's package unicode-data. Field 13 of a line is the simple lower-case mapping.
Ends with an error where the mapping would not be a folding of single UTF-16 units.
"""

import sys

DEFAULT_SOURCE = "/usr/share/unicode/UnicodeData.txt"
PAGE_SIZE = 256
PAGE_COUNT = 256


def lower_case_mapping(path):
    """The mapping of the basic plane as {unit: lower-case unit}."""
    mapping = {}
    with open(path, encoding="ascii") as lines:
        for line in lines:
            fields = line.rstrip("\n").split(";")
            unit = int(fields[0], 16)
            if unit > 0xFFFF or not fields[13]:
                continue
            mapping[unit] = int(fields[13], 16)
    return mapping


def check(mapping):
    for unit, lower in mapping.items():
        if lower > 0xFFFF:
            sys.exit(f"U+{unit:04X} maps to U+{lower:04X}, which is no single unit")
        if 0xD800 <= unit <= 0xDFFF or 0xD800 <= lower <= 0xDFFF:
            sys.exit(f"U+{unit:04X} maps to U+{lower:04X}: a surrogate")
        if mapping.get(lower, lower) != lower:
            sys.exit(f"U+{unit:04X} folded twice is not U+{lower:04X}")
    for unit in range(0x80):
        expected = unit + 32 if ord("A") <= unit <= ord("Z") else unit
        if mapping.get(unit, unit) != expected:
            sys.exit(f"U+{unit:04X} does not fold as ASCII does")


def pages_of(mapping):
    """Distinct pages of differences, and for each high byte the number of its page."""
    pages, page_of = [], []
    for high in range(PAGE_COUNT):
        units = range(high * PAGE_SIZE, (high + 1) * PAGE_SIZE)
        page = tuple((mapping.get(unit, unit) - unit) & 0xFFFF for unit in units)
        if page not in pages:
            pages.append(page)
        page_of.append(pages.index(page))
    return pages, page_of


def rows(values, width):
    for start in range(0, len(values), width):
        yield ", ".join(str(value) for value in values[start:start + width]) + ","


def write_table(out, pages, page_of):
    out.write("// Written by tools/make_fold_table.py from UnicodeData.txt; not edited by hand.\n")
    out.write("// clang-format off\n")
    out.write('#include "platform/text.h"\n\nnamespace quilmark {\n\n')
    out.write("const std::array<uint8_t, 256> kFoldPageOf = {\n")
    for row in rows(page_of, 32):
        out.write(f"    {row}\n")
    out.write("};\n\n")
    out.write(f"const std::array<char16_t, 256> kFoldPages[{len(pages)}] = {{\n")
    for page in pages:
        out.write("    {{\n" if any(page) else "    {{0}},\n")
        if any(page):
            for row in rows(page, 16):
                out.write(f"        {row}\n")
            out.write("    }},\n")
    out.write("};\n\n}  // namespace quilmark\n")


def main():
    mapping = lower_case_mapping(sys.argv[1] if len(sys.argv) > 1 else DEFAULT_SOURCE)
    check(mapping)
    pages, page_of = pages_of(mapping)
    write_table(sys.stdout, pages, page_of)


if __name__ == "__main__":
    main()
