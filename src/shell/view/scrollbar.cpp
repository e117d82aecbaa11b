#include "shell/view/scrollbar.h"

#include <algorithm>

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

}  // namespace quilmark
