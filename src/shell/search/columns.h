// The table's columns and their header, and what is left for the rows. Pixels at the window's own scale.
#pragma once

#include <array>
#include <cstdint>

#include "canvas/rect.h"

namespace quilmark {

// How rows are shown. The values stand in the settings file.
enum class ViewMode { kList = 0, kSmallIcons = 1, kLargeIcons = 2 };

inline constexpr int kColumns = 6, kPathColumn = 5;
inline constexpr int kCellTextInset = 15, kCellClipInset = 10;  // of a row, pixels at 96 dpi
using ColumnWidths = std::array<int, kColumns>;

// What the places of columns follow from.
struct ColumnsInput {
  ViewMode view = ViewMode::kList;
  int clientWidth = 0, clientHeight = 0;
  int sidebarWidth = 0;  // 0 without a sidebar
  int headerTop = 0;     // height of what stands above the list
  uint32_t dpi = 96;
  ColumnWidths columns = {};
};

// Where columns and rows stand.
struct ColumnsLayout {
  ViewMode view = ViewMode::kList;
  Rect header;           // empty in the icon views, which have no columns
  Rect rows;             // never inside out; the bars stand beside it
  int columnsWidth = 0;  // of all six
  ColumnWidths columns = {};
  uint32_t dpi = 96;
};

// Lays out header and rows. Total: gives a layout for every size, even a negative one.
ColumnsLayout LayoutColumns(const ColumnsInput& input);

// Left edge of a column of the header and of every row, `scrollX` further left.
int ColumnLeft(const ColumnsLayout& layout, int scrollX, int column);

// Where the text of a row stands in its cell. The path column has room for every text that it was fitted
// to.
Rect TextPlaceOf(const ColumnsLayout& layout, const Rect& cell, int column);

// The column at `x`, or -1. In the list view alone.
int ColumnAt(const ColumnsLayout& layout, int scrollX, int x);

// The column, of 0 to 4, whose right edge in the header lies within 8 pixels of the point, or -1.
int ColumnEdgeAt(const ColumnsLayout& layout, int scrollX, Point point);

// Width of a column of `startWidth` whose edge is dragged from `startX` to `x`.
int DraggedWidth(int startWidth, int startX, int x);

// Width of the path column: what the paths in view need, what is left beside the other columns, or
// `storedWidth`, which the settings hold, whichever is the widest. `widestText` is 0 where nothing was
// measured.
int FitPathColumn(const ColumnsLayout& layout, int widestText, int storedWidth);

}  // namespace quilmark
