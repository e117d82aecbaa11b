#!/usr/bin/env python3
"""Writes src/canvas/text_advances.cpp: how wide the characters of the basic plane are in the fonts of the tests.

    tools/make_advances.py > src/canvas/text_advances.cpp

The fonts are those that tools/wine_window.sh gives the window under Wine, of Debian's fonts-noto-cjk,
fonts-noto-core and fonts-dejavu-core. Widths are parts of the letters' height, PARTS to the whole: exact for fonts of 1,000 and of 2,048 units.
"""

import struct
import sys

CJK = "/usr/share/fonts/opentype/noto/NotoSansCJK-{}.ttc"
CJK_FACE = 2  # Simplified Chinese
PARTS = 256_000
LINKED = ["/usr/share/fonts/truetype/noto/NotoSans{}-Regular.ttf".format(script)
          for script in ("Arabic", "Devanagari", "Thai", "Hebrew", "Symbols2")]
LINKED.append("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf")


class Font:
    """The tables of a TrueType or OpenType font that tell widths: cmap, hhea, hmtx."""

    def __init__(self, path, face=0):
        with open(path, "rb") as file:
            self.data = file.read()
        offset = 0
        if self.data[:4] == b"ttcf":
            offset = self.at(">I", 12 + 4 * face)
        self.tables = {}
        for i in range(self.at(">H", offset + 4)):
            tag, _, start, _ = struct.unpack_from(">4sIII", self.data, offset + 12 + 16 * i)
            self.tables[tag.decode()] = start
        self.em = self.at(">H", self.tables["head"] + 18)
        self.widths = self.at(">H", self.tables["hhea"] + 34)

    def at(self, form, offset):
        return struct.unpack_from(form, self.data, offset)[0]

    def ascent_and_descent(self):
        """Of OS/2, usWinAscent and usWinDescent, which GDI goes by."""
        return tuple(self.at(">H", self.tables["OS/2"] + offset) * PARTS // self.em for offset in (74, 76))

    def advance(self, glyph):
        index = min(glyph, self.widths - 1)
        return self.at(">H", self.tables["hmtx"] + 4 * index) * PARTS // self.em

    def glyphs(self):
        """{unit: glyph} of the basic plane, by the table of Windows."""
        cmap = self.tables["cmap"]
        for i in range(self.at(">H", cmap + 2)):
            platform, encoding, offset = struct.unpack_from(">HHI", self.data, cmap + 4 + 8 * i)
            if (platform, encoding) == (3, 1) and self.at(">H", cmap + offset) == 4:
                return self.segments(cmap + offset)
        sys.exit("the font has no table of the basic plane")

    def segments(self, table):
        count = self.at(">H", table + 6) // 2
        found = {}
        for i in range(count):
            last = self.at(">H", table + 14 + 2 * i)
            first = self.at(">H", table + 16 + 2 * (count + i))
            delta = self.at(">H", table + 16 + 2 * (2 * count + i))
            place = table + 16 + 2 * (3 * count + i)
            jump = self.at(">H", place)
            for unit in range(first, min(last, 0xFFFE) + 1):
                glyph = unit + delta
                if jump:
                    glyph = self.at(">H", place + jump + 2 * (unit - first))
                    glyph = glyph + delta if glyph else 0
                if glyph & 0xFFFF:
                    found[unit] = glyph & 0xFFFF
        return found


def widths_of(fonts):
    """{unit: width}; a unit is taken from the first font that has it."""
    widths = {}
    for font in fonts:
        for unit, glyph in font.glyphs().items():
            widths.setdefault(unit, font.advance(glyph))
    return widths


def runs_of(widths, absent):
    """(first unit, width) wherever the width changes; `absent` for units that the font has not."""
    runs, former = [], None
    for unit in range(0x10000):
        width = widths.get(unit, absent)
        if width != former:
            runs.append((unit, width))
            former = width
    return runs


def write_table(name, runs):
    print(f"const AdvanceRun {name}Table[] = {{")
    for start in range(0, len(runs), 13):
        print("    " + ", ".join(f"{{{unit}, {width}}}" for unit, width in runs[start:start + 13]) + ",")
    print("};")
    print(f"const std::span<const AdvanceRun> {name} = {name}Table;\n")


def main():
    faces = {name: Font(CJK.format(name), CJK_FACE) for name in ("Regular", "Bold")}
    print("// Written by tools/make_advances.py from font files; not edited by hand.\n// clang-format off")
    print('#include "canvas/text_advances.h"\n\nnamespace quilmark {\n')
    print("const FontHeight kTextHeight = {%d, %d};\n" % faces["Regular"].ascent_and_descent())
    units = set()
    for name, font in faces.items():
        widths = widths_of([font])
        units |= set(widths)
        write_table(f"k{name}Advances", runs_of(widths, -1))
    # What the faces have need not be told once more: the runs of the others go on over it.
    linked = widths_of([Font(path) for path in LINKED])
    own, last = {}, PARTS
    for unit in range(0x10000):
        last = own[unit] = last if unit in units else linked.get(unit, PARTS)
    write_table("kLinkedAdvances", runs_of(own, PARTS))
    print("}  // namespace quilmark")


main()
