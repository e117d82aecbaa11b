#include "shell/view/scrollbar.h"

#include <algorithm>

#include "canvas/scale.h"

namespace quilmark {

Scrollbar PlaceThumb(const Rect& track, Bar kind, const ScrollState& state, int least) {
  const bool isVertical = kind == Bar::kVertical;
  const int room = std::max(isVertical ? Height(track) : Width(track), 0);
  const int64_t total = std::max<int64_t>(state.limit + state.page, 1);
  const int length = static_cast<int>(
      std::clamp<int64_t>(int64_t{room} * state.page / total, std::min(least, room), room));
  const int64_t offset = std::clamp<int64_t>(state.offset, 0, std::max<int64_t>(state.limit, 0));
  const int start = state.limit <= 0 ? 0 : static_cast<int>((room - length) * offset / state.limit);
  Scrollbar bar{track, track};
  int& begin = isVertical ? bar.thumb.top : bar.thumb.left;
  begin += start;
  (isVertical ? bar.thumb.bottom : bar.thumb.right) = begin + length;
  return bar;
}

int64_t DragToOffset(const Scrollbar& bar, Bar kind, int cursor, int64_t limit) {
  const bool isVertical = kind == Bar::kVertical;
  const int start = isVertical ? bar.track.top : bar.track.left;
  const int track = isVertical ? Height(bar.track) : Width(bar.track);
  const int thumb = isVertical ? Height(bar.thumb) : Width(bar.thumb);
  if (track <= thumb) return 0;
  const int64_t place = std::clamp<int64_t>(cursor - thumb / 2 - start, 0, track - thumb);
  return place * limit / (track - thumb);
}

std::optional<Scrollbar> DropListBar(const Rect& place, const BarState& state, uint32_t dpi) {
  constexpr int kLeastWidth = 5, kLeastDropThumb = 18;
  const int64_t limit = int64_t{state.maximum} - state.minimum + 1 - state.page;
  if (limit <= 0 || state.page <= 0 || Height(place) <= 0) return std::nullopt;
  Rect track = place;
  track.left = std::min(track.left, track.right - ScaleFor(dpi, kLeastWidth));
  return PlaceThumb(track, Bar::kVertical, {state.page, limit, int64_t{state.position} - state.minimum},
                    ScaleFor(dpi, kLeastDropThumb));
}

}  // namespace quilmark
