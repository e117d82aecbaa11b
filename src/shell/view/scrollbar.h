// Geometry of the scrollbars that are painted here. Pixels at the window's own scale.
#pragma once

#include <cstdint>
#include <optional>

#include "canvas/rect.h"

namespace quilmark {

// Pixels at 96 dpi.
inline constexpr int kBarWidth = 10, kLeastThumb = 24, kThumbRadius = 3;

// Which bar of a list.
enum class Bar { kNone = 0, kVertical = 1, kHorizontal = 2 };

// Where a bar and its thumb stand.
struct Scrollbar {
  Rect track, thumb;
};

// What a bar scrolls, in any unit.
struct ScrollState {
  int page = 0;        // in view
  int64_t limit = 0;   // greatest offset
  int64_t offset = 0;  // of the page; what lies outside of 0 to `limit` counts as the nearer end
};

// Places the thumb in proportion to what is in view, and at least `least` pixels long where the track
// has them.
Scrollbar PlaceThumb(const Rect& track, Bar kind, const ScrollState& state, int least);

// The offset, from 0 to `limit`, at which the thumb's middle stands under the cursor. `cursor` is its y
// for a vertical bar, its x for a horizontal one.
int64_t DragToOffset(const Scrollbar& bar, Bar kind, int cursor, int64_t limit);

// What a scrollbar of the system says of itself.
struct BarState {
  int minimum = 0, maximum = 0, page = 0, position = 0;
};

// The bar of a drop list, painted over the system's one at `place`. Empty where everything fits.
std::optional<Scrollbar> DropListBar(const Rect& place, const BarState& state, uint32_t dpi);

}  // namespace quilmark
