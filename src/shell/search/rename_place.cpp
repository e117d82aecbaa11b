#include "shell/search/rename_place.h"

#include <algorithm>

#include "canvas/scale.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kNameLeft = 34, kNameMargin = 44, kLeastWidth = 80, kTopInset = 4, kRowHeight = 44;
constexpr int kFarAbove = -10'000;  // pixels

Rect PlaceOverName(const ColumnsLayout& layout, const Rect& row, int scrollX) {
  const auto scaled = [&layout](int n) { return ScaleFor(layout.dpi, n); };
  const int left = layout.columns[0] + scaled(kNameLeft) + layout.rows.left - scrollX;
  const int width = std::max(layout.columns[1] - scaled(kNameMargin), scaled(kLeastWidth));
  const int top = row.top + scaled(kTopInset);
  return {left, top, left + width, top + scaled(kRowHeight - 2 * kTopInset)};
}

bool IsRowInView(const ColumnsLayout& layout, const Rect& row) {
  return row.top >= layout.rows.top && row.top < layout.rows.bottom;
}

}  // namespace

std::optional<Rect> PlaceOfRenameEditor(const ColumnsLayout& layout, const Rect& row, int scrollX) {
  if (!IsRowInView(layout, row)) return std::nullopt;
  return PlaceOverName(layout, row, scrollX);
}

Rect PlaceOfOpenRenameEditor(const ColumnsLayout& layout, const Rect& row, int scrollX) {
  Rect place = PlaceOverName(layout, row, scrollX);
  const bool isNameInView = place.left >= layout.rows.left && place.left < layout.rows.right;
  if (isNameInView && IsRowInView(layout, row)) return place;
  const int height = Height(place);
  place.top = kFarAbove;
  place.bottom = kFarAbove + height;
  return place;
}

}  // namespace quilmark
