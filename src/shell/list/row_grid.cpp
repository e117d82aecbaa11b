#include "shell/list/row_grid.h"

#include <algorithm>
#include <limits>

namespace quilmark {

namespace {

constexpr int64_t kFarthest = int64_t{1} << 62;  // pixels, and rows

int HeightOf(const RowGrid& grid) { return std::max(Height(grid.rows), 0); }
int WidthOf(const RowGrid& grid) { return std::max(Width(grid.rows), 0); }
int PitchOf(const RowGrid& grid) { return std::max(grid.pitch, 1); }

int64_t CountOf(uint64_t rowCount) {
  return static_cast<int64_t>(std::min(rowCount, static_cast<uint64_t>(kFarthest)));
}

// The lines of the rows, but no more than there are pixels for.
int64_t Lines(const RowGrid& grid, uint64_t rowCount) {
  const int64_t rows = CountOf(rowCount), across = Across(grid);
  return std::min(rows / across + (rows % across == 0 ? 0 : 1), kFarthest / PitchOf(grid));
}

RowSpan RowsOfLines(const RowGrid& grid, uint64_t rowCount, int64_t first, int64_t end) {
  const int64_t rows = CountOf(rowCount), lines = Lines(grid, rowCount), across = Across(grid);
  const auto rowOf = [&](int64_t line) {
    return static_cast<uint64_t>(std::min(std::clamp<int64_t>(line, 0, lines) * across, rows));
  };
  return {rowOf(first), std::max(rowOf(first), rowOf(end))};
}

// A bar reckons in steps of so many pixels that no product with a length on the screen overflows.
int64_t PixelsOfStep(int64_t limit, int room) {
  int64_t step = 1;
  while (limit / step > std::numeric_limits<int64_t>::max() / std::max(room, 1)) step *= 2;
  return step;
}

Scrollbar BarOf(const Rect& track, Bar kind, const ScrollState& state, int least) {
  const int room = kind == Bar::kVertical ? Height(track) : Width(track);
  const int64_t step = PixelsOfStep(state.limit, room);
  const int page = static_cast<int>(state.page / step);
  return PlaceThumb(track, kind, {page, state.limit / step, state.offset / step}, std::max(least, 0));
}

}  // namespace

int Across(const RowGrid& grid) {
  return grid.cellWidth <= 0 ? 1 : std::max(WidthOf(grid) / grid.cellWidth, 1);
}

int64_t RowAt(const RowGrid& grid, int64_t scrollY, uint64_t rowCount, Point point) {
  if (!Holds(grid.rows, point)) return -1;
  const int64_t offset = std::clamp(scrollY, -kFarthest, kFarthest) + point.y - grid.rows.top;
  const int64_t line = offset / PitchOf(grid);
  if (offset < 0 || line >= Lines(grid, rowCount)) return -1;
  const int cell = grid.cellWidth <= 0 ? 0 : (point.x - grid.rows.left) / grid.cellWidth;
  if (cell >= Across(grid)) return -1;
  const int64_t row = line * Across(grid) + cell;
  return row < CountOf(rowCount) ? row : -1;
}

Rect PlaceOfRow(const RowGrid& grid, int64_t scrollY, uint64_t row) {
  const int64_t across = Across(grid), number = CountOf(row), pitch = PitchOf(grid);
  const int64_t line = std::min(number / across, kFarthest / pitch);
  const int64_t lineTop = line * pitch - std::clamp(scrollY, -kFarthest / 2, kFarthest) + grid.rows.top;
  // Rows far outside of the view keep to numbers that a rectangle can hold.
  constexpr int64_t kFar = 1'000'000;
  const int top = static_cast<int>(std::clamp<int64_t>(lineTop, -kFar, kFar));
  const int bottom = top + static_cast<int>(std::min(pitch, kFar));
  if (grid.cellWidth <= 0)
    return {grid.rows.left, top, std::max(grid.rows.right, grid.rows.left), bottom};
  const int left = grid.rows.left + static_cast<int>(number % across) * grid.cellWidth;
  return {left, top, left + grid.cellWidth, bottom};
}

RowSpan RowsToPaint(const RowGrid& grid, int64_t scrollY, uint64_t rowCount) {
  const int64_t first = std::clamp<int64_t>(scrollY, 0, kFarthest) / PitchOf(grid);
  return RowsOfLines(grid, rowCount, first, first + HeightOf(grid) / PitchOf(grid) + 2);
}

RowSpan RowsWithin(const RowGrid& grid, int64_t scrollY, uint64_t rowCount, const Rect& place) {
  const Rect shown = Intersection(place, grid.rows);
  if (IsEmpty(shown)) return {};
  const int64_t pitch = PitchOf(grid), offset = std::clamp(scrollY, -kFarthest, kFarthest);
  const int64_t top = std::max<int64_t>(offset + shown.top - grid.rows.top, 0);
  const int64_t bottom = std::max<int64_t>(offset + shown.bottom - grid.rows.top, 0);
  return RowsOfLines(grid, rowCount, top / pitch, bottom / pitch + (bottom % pitch == 0 ? 0 : 1));
}

int64_t ScrollLimit(const RowGrid& grid, uint64_t rowCount) {
  return std::max<int64_t>(Lines(grid, rowCount) * PitchOf(grid) - HeightOf(grid), 0);
}

int64_t ClampScroll(const RowGrid& grid, int64_t scrollY, uint64_t rowCount) {
  return std::clamp<int64_t>(scrollY, 0, ScrollLimit(grid, rowCount));
}

int HorizontalLimit(const RowGrid& grid) {
  return grid.cellWidth > 0 ? 0 : std::max(std::max(grid.contentWidth, 0) - WidthOf(grid), 0);
}

int ClampHorizontal(const RowGrid& grid, int64_t scrollX) {
  return static_cast<int>(std::clamp<int64_t>(scrollX, 0, HorizontalLimit(grid)));
}

std::optional<Scrollbar> VerticalBar(const RowGrid& grid, int64_t scrollY, uint64_t rowCount) {
  const Rect& rows = grid.rows;
  const int64_t limit = ScrollLimit(grid, rowCount);
  const Rect track = {rows.right, rows.top, rows.right + grid.bar, rows.bottom};
  if (limit <= std::max(grid.slack, 0) || IsEmpty(track)) return std::nullopt;
  return BarOf(track, Bar::kVertical, {HeightOf(grid), limit, scrollY}, grid.leastThumb);
}

std::optional<Scrollbar> HorizontalBar(const RowGrid& grid, int scrollX) {
  const Rect& rows = grid.rows;
  const int limit = HorizontalLimit(grid);
  const Rect track = {rows.left, rows.bottom, rows.right, rows.bottom + grid.bar};
  if (limit == 0 || IsEmpty(track)) return std::nullopt;
  return BarOf(track, Bar::kHorizontal, {WidthOf(grid), limit, scrollX}, grid.leastThumb);
}

int64_t OffsetUnder(const Scrollbar& bar, Bar kind, int cursor, int64_t limit) {
  const bool isVertical = kind == Bar::kVertical;
  const int start = isVertical ? bar.track.top : bar.track.left;
  const int end = isVertical ? bar.track.bottom : bar.track.right;
  const int within = std::clamp(cursor, start, std::max(start, end));
  const int64_t step = PixelsOfStep(limit, end - start);
  const int64_t steps = DragToOffset(bar, kind, within, limit / step);
  return steps == limit / step ? limit : steps * step;
}

}  // namespace quilmark
