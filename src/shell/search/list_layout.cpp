#include "shell/search/list_layout.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "shell/search/layout.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kHeader = 40, kMargin = 2, kLeastCell = 72;
constexpr int kLeastPath = 200, kPathMargin = 20;

// Pixels whatever the scale.
constexpr int kLeastColumn = 30, kEdgeReach = 8;

struct ViewRow {
  int pitch, cellWidth, header;
};
constexpr ViewRow kViews[] = {{44, 0, kHeader}, {84, 110, 0}, {112, 150, 0}};

uint64_t Lines(const ListLayout& layout, uint64_t rowCount) {
  const auto across = static_cast<uint64_t>(layout.across);
  return rowCount / across + (rowCount % across == 0 ? 0 : 1);
}

}  // namespace

ListLayout LayoutList(const ListInput& input) {
  const auto scaled = [&input](int n) { return ScaleFor(input.dpi, n); };
  const ViewRow& view = kViews[static_cast<size_t>(input.view)];
  ListLayout layout{
      .view = input.view, .columns = input.columns, .bar = scaled(kBarWidth), .dpi = input.dpi};
  layout.columnsWidth = std::accumulate(input.columns.begin(), input.columns.end(), 0);

  const int left = input.sidebarWidth;
  const int right = std::max(input.clientWidth - layout.bar - scaled(kMargin), 0);
  const int top = input.headerTop + scaled(view.header);
  const bool isWide = input.view == ViewMode::kList && layout.columnsWidth > right - left;
  const int bottom = input.clientHeight - scaled(kMargin) - (isWide ? layout.bar : 0);
  layout.rows = {left, top, std::max(right, left), std::max(bottom, top)};
  layout.header = {left, input.headerTop, std::max(input.clientWidth, left), top};

  layout.pitch = std::max(scaled(view.pitch), 1);
  if (input.view != ViewMode::kList) {
    layout.cellWidth = std::max(scaled(view.cellWidth), scaled(kLeastCell));
    layout.across = std::max(Width(layout.rows) / layout.cellWidth, 1);
  }
  return layout;
}

int64_t RowAt(const ListLayout& layout, int64_t scrollY, uint64_t rowCount, Point point) {
  if (!Holds(layout.rows, point)) return -1;
  int64_t row = (point.y - layout.rows.top + scrollY) / layout.pitch;
  if (layout.view != ViewMode::kList) {
    const int cell = (point.x - layout.rows.left) / layout.cellWidth;
    if (cell >= layout.across) return -1;
    row = row * layout.across + cell;
  }
  return row >= 0 && static_cast<uint64_t>(row) < rowCount ? row : -1;
}

Rect PlaceOfRow(const ListLayout& layout, int64_t scrollY, uint64_t row) {
  const auto across = static_cast<uint64_t>(layout.across);
  const int64_t lineTop = static_cast<int64_t>(row / across) * layout.pitch - scrollY + layout.rows.top;
  // Rows far outside of the view keep to numbers that a rectangle can hold.
  constexpr int64_t kFar = 1'000'000;
  const int top = static_cast<int>(std::clamp<int64_t>(lineTop, -kFar, kFar));
  if (layout.view == ViewMode::kList)
    return {layout.rows.left, top, layout.rows.right, top + layout.pitch};
  const int left = layout.rows.left + static_cast<int>(row % across) * layout.cellWidth;
  return {left, top, left + layout.cellWidth, top + layout.pitch};
}

RowsInView RowsToPaint(const ListLayout& layout, int64_t scrollY, uint64_t rowCount) {
  const auto across = static_cast<uint64_t>(layout.across);
  const auto first = static_cast<uint64_t>(std::max<int64_t>(scrollY, 0) / layout.pitch);
  const auto lines = static_cast<uint64_t>(Height(layout.rows) / layout.pitch) + 2;
  return {std::min(first * across, rowCount), std::min((first + lines) * across, rowCount)};
}

int64_t ScrollLimit(const ListLayout& layout, uint64_t rowCount) {
  const int64_t height = static_cast<int64_t>(Lines(layout, rowCount)) * layout.pitch;
  return std::max<int64_t>(height - Height(layout.rows), 0);
}

int64_t ClampScroll(const ListLayout& layout, int64_t scrollY, uint64_t rowCount) {
  return std::clamp<int64_t>(scrollY, 0, ScrollLimit(layout, rowCount));
}

int ClampHorizontal(const ListLayout& layout, int scrollX) {
  if (layout.view != ViewMode::kList) return 0;
  return std::clamp(scrollX, 0, std::max(layout.columnsWidth - Width(layout.rows), 0));
}

int ColumnLeft(const ListLayout& layout, int scrollX, int column) {
  return std::accumulate(layout.columns.begin(), layout.columns.begin() + column,
                         layout.rows.left - scrollX);
}

int ColumnAt(const ListLayout& layout, int scrollX, int x) {
  int right = layout.rows.left - scrollX;
  if (layout.view != ViewMode::kList || x < right) return -1;
  for (int column = 0; column < kColumns; ++column) {
    right += layout.columns[static_cast<size_t>(column)];
    if (x < right) return column;
  }
  return -1;
}

int ColumnEdgeAt(const ListLayout& layout, int scrollX, Point point) {
  if (layout.view != ViewMode::kList || !Holds(layout.header, point)) return -1;
  for (int column = 0; column < kPathColumn; ++column) {
    if (std::abs(point.x - ColumnLeft(layout, scrollX, column + 1)) <= kEdgeReach) return column;
  }
  return -1;
}

int DraggedWidth(int startWidth, int startX, int x) {
  return std::max(startWidth + x - startX, kLeastColumn);
}

Rect TextPlaceOf(const ListLayout& layout, const Rect& cell, int column) {
  const int left = ScaleFor(layout.dpi, kCellTextInset);
  const int right = column == kPathColumn ? ScaleFor(layout.dpi, kPathMargin) - left
                                          : ScaleFor(layout.dpi, kCellClipInset);
  return {cell.left + left, cell.top, cell.right - right, cell.bottom};
}

int FitPathColumn(const ListLayout& layout, int widestText, int storedWidth) {
  const int others = layout.columnsWidth - layout.columns[kPathColumn];
  const int free = Width(layout.rows) - others;
  const int floor = std::max(ScaleFor(layout.dpi, kLeastPath), storedWidth);
  const int wanted = widestText > 0 ? widestText + ScaleFor(layout.dpi, kPathMargin) : 0;
  return std::max({wanted, free, floor});
}

std::optional<Scrollbar> VerticalBar(const ListLayout& layout, int64_t scrollY, uint64_t rowCount) {
  const int64_t limit = ScrollLimit(layout, rowCount);
  const Rect track = {layout.rows.right, layout.rows.top, layout.rows.right + layout.bar,
                      layout.rows.bottom};
  if (limit == 0 || Height(track) <= 0) return std::nullopt;
  return PlaceThumb(track, Bar::kVertical, {Height(layout.rows), limit, scrollY},
                    ScaleFor(layout.dpi, kLeastThumb));
}

std::optional<Scrollbar> HorizontalBar(const ListLayout& layout, int scrollX) {
  const int limit = layout.columnsWidth - Width(layout.rows);
  const Rect track = {layout.rows.left, layout.rows.bottom, layout.rows.right,
                      layout.rows.bottom + layout.bar};
  if (layout.view != ViewMode::kList || limit <= 0 || Width(track) <= 0) return std::nullopt;
  return PlaceThumb(track, Bar::kHorizontal, {Width(layout.rows), limit, scrollX},
                    ScaleFor(layout.dpi, kLeastThumb));
}

}  // namespace quilmark
