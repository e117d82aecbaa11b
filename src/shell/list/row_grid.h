// Geometry of a list: rows of one height, one a line or as many icons as a line has room for. Pixels at
// the window's own scale.
#pragma once

#include <cstdint>
#include <optional>

#include "canvas/rect.h"
#include "shell/view/native_control.h"
#include "shell/view/scrollbar.h"

namespace quilmark {

struct RowGrid {
  Rect rows;             // the bars stand beside it, at its right and below
  int pitch = 1;         // of a line of rows
  int cellWidth = 0;     // of an icon; 0: one row a line
  int contentWidth = 0;  // of the columns of a row; 0: none
  int bar = 0;           // width of a scrollbar
  int leastThumb = 0;
  int slack = 0;  // a vertical bar stands from more than so many pixels too much on
};

// All functions are total: they answer for every count, offset and place, also one that is inside out.
// Of content higher than 2^62 pixels the end is out of reach.

// Rows in a line, above 0.
int Across(const RowGrid& grid);

// The row under a point, or -1.
int64_t RowAt(const RowGrid& grid, int64_t scrollY, uint64_t rowCount, Point point);

// The place of a row, which may lie outside the list: as far away as a rectangle has room for.
Rect PlaceOfRow(const RowGrid& grid, int64_t scrollY, uint64_t row);

struct RowSpan {
  uint64_t first = 0, end = 0;  // end: behind the last

  bool operator==(const RowSpan&) const = default;
};
// Those in view, and the line or two that may show below them.
RowSpan RowsToPaint(const RowGrid& grid, int64_t scrollY, uint64_t rowCount);
// Those of the lines of which something lies within the place, and within the list.
RowSpan RowsWithin(const RowGrid& grid, int64_t scrollY, uint64_t rowCount, const Rect& place);

// Offsets within the rows and within the columns.
int64_t ScrollLimit(const RowGrid& grid, uint64_t rowCount);
int64_t ClampScroll(const RowGrid& grid, int64_t scrollY, uint64_t rowCount);
int HorizontalLimit(const RowGrid& grid);
int ClampHorizontal(const RowGrid& grid, int64_t scrollX);

// Empty where everything fits.
std::optional<Scrollbar> VerticalBar(const RowGrid& grid, int64_t scrollY, uint64_t rowCount);
std::optional<Scrollbar> HorizontalBar(const RowGrid& grid, int scrollX);

// The offset that brings the middle of a bar's thumb under a cursor at `cursor`, which is an x or a y.
int64_t OffsetUnder(const Scrollbar& bar, Bar kind, int cursor, int64_t limit);

}  // namespace quilmark
