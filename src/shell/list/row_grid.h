// Geometry of a list: rows of one height, one a line or as many icons as a line has room for. Pixels at
// the window's own scale.
#pragma once

#include <cstdint>
#include <optional>

#include "canvas/rect.h"
#include "shell/view/native_control.h"
#include "shell/view/scrollbar.h"

namespace quilmark {

// What the places of rows follow from.
struct RowGrid {
  Rect rows;             // the bars stand beside it, at its right and below
  int pitch = 1;         // of a line of rows
  int cellWidth = 0;     // of an icon; 0: one row a line
  int contentWidth = 0;  // of the columns of a row; 0: none
  int bar = 0;           // width of a scrollbar
  int leastThumb = 0;
  int slack = 0;  // a vertical bar stands from more than so many pixels too much on
};

// All functions below are total: they answer for every count, offset and place, also one that is inside
// out. Of content higher than 2^62 pixels the end is out of reach.

// How many rows a line holds; at least 1.
int Across(const RowGrid& grid);

// The row under a point, or -1.
int64_t RowAt(const RowGrid& grid, int64_t scrollY, uint64_t rowCount, Point point);

// The place of a row, which may lie outside the list: as far away as a rectangle has room for.
Rect PlaceOfRow(const RowGrid& grid, int64_t scrollY, uint64_t row);

// Rows one behind the other.
struct RowSpan {
  uint64_t first = 0, end = 0;  // end: behind the last

  bool operator==(const RowSpan&) const = default;
};

// The rows in view, and those of the line or two that may show below them.
RowSpan RowsToPaint(const RowGrid& grid, int64_t scrollY, uint64_t rowCount);

// The rows of the lines of which something lies within the place, and within the list.
RowSpan RowsWithin(const RowGrid& grid, int64_t scrollY, uint64_t rowCount, const Rect& place);

// The greatest vertical offset; 0 where all rows fit.
int64_t ScrollLimit(const RowGrid& grid, uint64_t rowCount);

// The nearest vertical offset from 0 to the limit.
int64_t ClampScroll(const RowGrid& grid, int64_t scrollY, uint64_t rowCount);

// The greatest horizontal offset; 0 where all columns fit, and for icons.
int HorizontalLimit(const RowGrid& grid);

// The nearest horizontal offset from 0 to the limit.
int ClampHorizontal(const RowGrid& grid, int64_t scrollX);

// The bar right of the rows. Empty where everything fits.
std::optional<Scrollbar> VerticalBar(const RowGrid& grid, int64_t scrollY, uint64_t rowCount);

// The bar below the rows. Empty where everything fits.
std::optional<Scrollbar> HorizontalBar(const RowGrid& grid, int scrollX);

// The offset that brings the middle of a bar's thumb under a cursor at `cursor`, which is an x or a y.
int64_t OffsetUnder(const Scrollbar& bar, Bar kind, int cursor, int64_t limit);

}  // namespace quilmark
