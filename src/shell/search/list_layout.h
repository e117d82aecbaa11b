// Geometry of the results list: three views of the same rows. Pixels at the window's own scale.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "canvas/rect.h"
#include "shell/view/scrollbar.h"

namespace quilmark {

enum class ViewMode { kList = 0, kSmallIcons = 1, kLargeIcons = 2 };

inline constexpr int kColumns = 6, kPathColumn = 5;
inline constexpr int kCellTextInset = 15, kCellClipInset = 10;  // of a row, pixels at 96 dpi
using ColumnWidths = std::array<int, kColumns>;

struct ListInput {
  ViewMode view = ViewMode::kList;
  int clientWidth = 0, clientHeight = 0;
  int sidebarWidth = 0;  // 0 without a sidebar
  int headerTop = 0;     // height of what stands above the list
  uint32_t dpi = 96;
  ColumnWidths columns = {};
};

struct ListLayout {
  ViewMode view = ViewMode::kList;
  Rect header;           // of the columns; empty in the icon views
  Rect rows;             // never inside out
  int pitch = 1;         // of a line of rows, above 0
  int cellWidth = 1;     // icon views
  int across = 1;        // rows in a line, above 0
  int columnsWidth = 0;  // List: of all six
  ColumnWidths columns = {};
  int bar = 10;  // width of a scrollbar
  uint32_t dpi = 96;
};

// Total: gives a layout for every size, even a negative one.
ListLayout LayoutList(const ListInput& input);

// The row under a point, or -1.
int64_t RowAt(const ListLayout& layout, int64_t scrollY, uint64_t rowCount, Point point);

// The place of a row, which may lie outside the list.
Rect PlaceOfRow(const ListLayout& layout, int64_t scrollY, uint64_t row);

struct RowsInView {
  uint64_t first = 0, end = 0;  // end: behind the last
};
RowsInView RowsToPaint(const ListLayout& layout, int64_t scrollY, uint64_t rowCount);

// Offsets within the rows and within the columns.
int64_t ScrollLimit(const ListLayout& layout, uint64_t rowCount);
int64_t ClampScroll(const ListLayout& layout, int64_t scrollY, uint64_t rowCount);
int ClampHorizontal(const ListLayout& layout, int scrollX);

// Left edge of a column of the header and of every row.
int ColumnLeft(const ListLayout& layout, int scrollX, int column);

// Where the text of a row stands in its cell; the path column holds every text that it was fitted to.
Rect TextPlaceOf(const ListLayout& layout, const Rect& cell, int column);

// The column at `x`, or -1. List view.
int ColumnAt(const ListLayout& layout, int scrollX, int x);

// The column, of 0 to 4, whose right edge in the header lies within 8 pixels of the point, or -1.
int ColumnEdgeAt(const ListLayout& layout, int scrollX, Point point);

// Width of a column whose edge is dragged from `startX` to `x`.
int DraggedWidth(int startWidth, int startX, int x);

// Width of the path column: what the paths in view need, or what is left beside the other columns.
// `widestText` 0: nothing was measured. `storedWidth`: that of the settings.
int FitPathColumn(const ListLayout& layout, int widestText, int storedWidth);

// Empty where everything fits.
std::optional<Scrollbar> VerticalBar(const ListLayout& layout, int64_t scrollY, uint64_t rowCount);
std::optional<Scrollbar> HorizontalBar(const ListLayout& layout, int scrollX);

}  // namespace quilmark
