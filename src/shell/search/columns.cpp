#include "shell/search/columns.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "canvas/scale.h"
#include "shell/view/scrollbar.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kHeader = 40, kMargin = 2;
constexpr int kLeastPath = 200, kPathMargin = 20;

// Pixels whatever the scale.
constexpr int kLeastColumn = 30, kEdgeReach = 8;

}  // namespace

ColumnsLayout LayoutColumns(const ColumnsInput& input) {
  const auto scaled = [&input](int n) { return ScaleFor(input.dpi, n); };
  ColumnsLayout layout{.view = input.view, .columns = input.columns, .dpi = input.dpi};
  layout.columnsWidth = std::accumulate(input.columns.begin(), input.columns.end(), 0);

  const bool isTable = input.view == ViewMode::kList;
  const int left = input.sidebarWidth, bar = scaled(kBarWidth);
  const int right = std::max(input.clientWidth - bar - scaled(kMargin), 0);
  const int top = input.headerTop + (isTable ? scaled(kHeader) : 0);
  const bool isWide = isTable && layout.columnsWidth > right - left;
  const int bottom = input.clientHeight - scaled(kMargin) - (isWide ? bar : 0);
  layout.rows = {left, top, std::max(right, left), std::max(bottom, top)};
  layout.header = {left, input.headerTop, std::max(input.clientWidth, left), top};
  return layout;
}

int ColumnLeft(const ColumnsLayout& layout, int scrollX, int column) {
  return std::accumulate(layout.columns.begin(), layout.columns.begin() + column,
                         layout.rows.left - scrollX);
}

int ColumnAt(const ColumnsLayout& layout, int scrollX, int x) {
  int right = layout.rows.left - scrollX;
  if (layout.view != ViewMode::kList || x < right) return -1;
  for (int column = 0; column < kColumns; ++column) {
    right += layout.columns[static_cast<size_t>(column)];
    if (x < right) return column;
  }
  return -1;
}

int ColumnEdgeAt(const ColumnsLayout& layout, int scrollX, Point point) {
  if (layout.view != ViewMode::kList || !Holds(layout.header, point)) return -1;
  for (int column = 0; column < kPathColumn; ++column) {
    if (std::abs(point.x - ColumnLeft(layout, scrollX, column + 1)) <= kEdgeReach) return column;
  }
  return -1;
}

int DraggedWidth(int startWidth, int startX, int x) {
  return std::max(startWidth + x - startX, kLeastColumn);
}

Rect TextPlaceOf(const ColumnsLayout& layout, const Rect& cell, int column) {
  const int left = ScaleFor(layout.dpi, kCellTextInset);
  const int right = column == kPathColumn ? ScaleFor(layout.dpi, kPathMargin) - left
                                          : ScaleFor(layout.dpi, kCellClipInset);
  return {cell.left + left, cell.top, cell.right - right, cell.bottom};
}

int FitPathColumn(const ColumnsLayout& layout, int widestText, int storedWidth) {
  const int others = layout.columnsWidth - layout.columns[kPathColumn];
  const int free = Width(layout.rows) - others;
  const int floor = std::max(ScaleFor(layout.dpi, kLeastPath), storedWidth);
  const int wanted = widestText > 0 ? widestText + ScaleFor(layout.dpi, kPathMargin) : 0;
  return std::max({wanted, free, floor});
}

}  // namespace quilmark
