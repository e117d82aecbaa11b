// Where things stand in the window. Pixels at the window's own scale.
#pragma once

#include <cstdint>

#include "shell/rect.h"

namespace quilmark {

struct TopRowInput {
  int clientWidth = 0;
  uint32_t dpi = 96;
};
struct TopRowLayout {
  Rect scope, search;
};

// The row of the search box. Total: gives a layout for every width, even a negative one.
TopRowLayout LayoutTopRow(const TopRowInput& input);

// Pixels for `n` pixels at 96 dpi; a dpi of 0 counts as 96.
int ScaleFor(uint32_t dpi, int n);

struct ListInput {
  int clientWidth = 0, clientHeight = 0;
  int headerTop = 0;  // height of what stands above the list
  uint32_t dpi = 96;
};
struct ListLayout {
  Rect header, rows;  // never inside out
  int pitch = 0;      // of a row, above 0
};
ListLayout LayoutList(const ListInput& input);

// A scroll offset within the rows.
int64_t ClampScroll(int64_t scrollY, uint64_t rowCount, const ListLayout& layout);

struct RowsInView {
  uint64_t first = 0, end = 0;  // end: behind the last
};
RowsInView RowsToPaint(int64_t scrollY, uint64_t rowCount, const ListLayout& layout);

}  // namespace quilmark
