#include "shell/search/rename_place.h"

#include <algorithm>

#include "shell/search/layout.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kNameLeft = 34, kNameMargin = 44, kLeastWidth = 80, kTopInset = 4, kRowHeight = 44;
constexpr int kFarAbove = -10'000;  // pixels

Rect PlaceOverName(const ListLayout& layout, int64_t scrollY, int scrollX, uint64_t row) {
  const auto scaled = [&layout](int n) { return ScaleFor(layout.dpi, n); };
  const int left = layout.columns[0] + scaled(kNameLeft) + layout.rows.left - scrollX;
  const int width = std::max(layout.columns[1] - scaled(kNameMargin), scaled(kLeastWidth));
  const int top = PlaceOfRow(layout, scrollY, row).top + scaled(kTopInset);
  return {left, top, left + width, top + scaled(kRowHeight - 2 * kTopInset)};
}

bool IsRowInView(const ListLayout& layout, int64_t scrollY, uint64_t row) {
  const int top = PlaceOfRow(layout, scrollY, row).top;
  return top >= layout.rows.top && top < layout.rows.bottom;
}

}  // namespace

std::optional<Rect> PlaceOfRenameEditor(const ListLayout& layout, int64_t scrollY, int scrollX,
                                        uint64_t row) {
  if (!IsRowInView(layout, scrollY, row)) return std::nullopt;
  return PlaceOverName(layout, scrollY, scrollX, row);
}

Rect PlaceOfOpenRenameEditor(const ListLayout& layout, int64_t scrollY, int scrollX, uint64_t row) {
  Rect place = PlaceOverName(layout, scrollY, scrollX, row);
  const bool isNameInView = place.left >= layout.rows.left && place.left < layout.rows.right;
  if (isNameInView && IsRowInView(layout, scrollY, row)) return place;
  const int height = Height(place);
  place.top = kFarAbove;
  place.bottom = kFarAbove + height;
  return place;
}

}  // namespace quilmark
