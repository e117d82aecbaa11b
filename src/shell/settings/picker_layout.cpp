#include "shell/settings/picker_layout.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "canvas/scale.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kMargin = 14, kGap = 8, kHintHeight = 40, kLabelHeight = 20, kRowHeight = 32,
              kSmallButton = 76;

Rect Between(int left, int top, int right, int bottom) {
  return {left, top, std::max(left, right), std::max(top, bottom)};
}

// Equal parts of a row with gaps between, which end where the row ends.
template <size_t count>
std::array<Rect, count> Split(const Rect& row, int gap) {
  std::array<Rect, count> parts;
  const int parts32 = static_cast<int>(count), width = Width(row) - gap * (parts32 - 1);
  for (int i = 0; i < parts32; ++i) {
    const int left = row.left + width * i / parts32 + gap * i;
    parts[static_cast<size_t>(i)] =
        Between(left, row.top, row.left + width * (i + 1) / parts32 + gap * i, row.bottom);
  }
  return parts;
}

}  // namespace

PickerPlaces PlacePicker(const Rect& client, uint32_t dpi) {
  const int margin = ScaleFor(dpi, kMargin), gap = ScaleFor(dpi, kGap), row = ScaleFor(dpi, kRowHeight),
            small = ScaleFor(dpi, kSmallButton);
  const int left = client.left + margin, right = std::max(client.right - margin, left);
  const auto rowAt = [&](int bottom) { return Between(left, bottom - row, right, bottom); };
  const Rect last = rowAt(client.bottom - margin);
  const Rect upperRow = rowAt(last.top - gap);
  const Rect own = rowAt(upperRow.top - margin);
  PickerPlaces places;
  places.hint =
      Between(left, client.top + margin, right, client.top + margin + ScaleFor(dpi, kHintHeight));
  places.label = Between(left, own.top - ScaleFor(dpi, kLabelHeight), right, own.top);
  places.list = Between(left, places.hint.bottom + gap, right, places.label.top - gap);
  places.remove = Between(std::max(right - small, left), own.top, right, own.bottom);
  places.add = Between(std::max(places.remove.left - gap - small, left), own.top,
                       places.remove.left - gap, own.bottom);
  places.field = Between(left, own.top, places.add.left - gap, own.bottom);
  const auto upper = Split<3>(upperRow, gap);
  places.accept = upper[0];
  places.all = upper[1];
  places.invert = upper[2];
  const auto lower = Split<2>(last, gap);
  places.config = lower[0];
  places.cancel = lower[1];
  return places;
}

}  // namespace quilmark
