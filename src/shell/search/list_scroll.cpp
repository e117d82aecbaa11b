#include "shell/search/list_scroll.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "search/filtered_results.h"
#include "shell/search/rename.h"
#include "shell/search/search_places.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint64_t kScrollRestMs = 350;
constexpr uint32_t kSettleMs = 400, kRepaintMs = 12;
constexpr int kColumnStep = 40;  // pixels, as a notch of a tilted wheel

// What a command asks for, in pixels.
struct Extent {
  int64_t now = 0, limit = 0, line = 0, page = 0, step = 1;
};

std::optional<int64_t> OffsetAfter(ScrollCommand command, const Extent& extent, int64_t position) {
  switch (command) {
    case ScrollCommand::kLineBack:
      return extent.now - extent.line;
    case ScrollCommand::kLineOn:
      return extent.now + extent.line;
    case ScrollCommand::kPageBack:
      return extent.now - extent.page;
    case ScrollCommand::kPageOn:
      return extent.now + extent.page;
    case ScrollCommand::kTo:
    case ScrollCommand::kTrackTo:
      return std::clamp<int64_t>(position, 0, extent.limit) * extent.step;
    case ScrollCommand::kBegin:
      return 0;
    case ScrollCommand::kEnd:
      return extent.limit;
    default:
      return std::nullopt;
  }
}

void MarkScroll(SearchView& view, const ViewContext& context) {
  view.lastScrollTick = context.nowMs;
  context.window.StartTimer(kTimerScrollSettle, kSettleMs);
}

int HorizontalLimit(const ListLayout& layout) {
  return ClampHorizontal(layout, std::numeric_limits<int>::max());
}

Effects ScrollColumnsTo(SearchView& view, const ViewContext& context, int64_t x) {
  const int limit = HorizontalLimit(PlaceList(view, context));
  const auto clamped = static_cast<int>(std::clamp<int64_t>(x, 0, limit));
  if (clamped == view.scrollX) return {};
  view.scrollX = clamped;
  MarkScroll(view, context);
  Effects effects = MoveRename(view, context);
  effects.Join(RequestListRepaint(view, context, kRepaintMs));
  return effects;
}

}  // namespace

bool IsScrolling(const SearchView& view, uint64_t nowMs) {
  return view.thumbDragging || nowMs - view.lastScrollTick < kScrollRestMs;
}

Effects RequestListRepaint(SearchView& view, const ViewContext& context, uint32_t delayMs) {
  return RequestRepaint(view.repaint, context, ListAreaOf(view, context), delayMs);
}

Effects ScrollTo(SearchView& view, const ViewContext& context, int64_t y) {
  const int64_t clamped = ClampScroll(PlaceList(view, context), y, DisplayCount);
  if (clamped == view.scrollY) return {};
  view.scrollY = clamped;
  view.list.hoverRow = -1;  // until the list rests: another row stands there now
  const bool isBurst = !view.thumbDragging && IsScrolling(view, context.nowMs);
  if (isBurst) {
    Effects effects = MoveRename(view, context);
    effects.Join(RequestListRepaint(view, context, kRepaintMs));
    return effects;
  }
  Effects effects = RelayoutList(view, context);
  effects.dirty = ListAreaOf(view, context);
  return effects;
}

int64_t PixelsOfBarStep(int64_t limit, int page) {
  int64_t step = 1;
  while ((limit + page) / step > std::numeric_limits<int32_t>::max()) step *= 2;
  return step;
}

Effects ScrollRows(SearchView& view, const ViewContext& context, ScrollCommand command,
                   int64_t position) {
  const ListLayout layout = PlaceList(view, context);
  const int64_t limit = ScrollLimit(layout, DisplayCount);
  const int height = Height(layout.rows);
  const int64_t page = std::max(height - layout.pitch, layout.pitch);
  const auto y = OffsetAfter(
      command, {view.scrollY, limit, layout.pitch, page, PixelsOfBarStep(limit, height)}, position);
  if (!y) return {};
  MarkScroll(view, context);
  return ScrollTo(view, context, *y);
}

Effects ScrollColumns(SearchView& view, const ViewContext& context, ScrollCommand command,
                      int64_t position) {
  const ListLayout layout = PlaceList(view, context);
  const int64_t page = std::max(Width(layout.rows) - kColumnStep, kColumnStep);
  const auto x =
      OffsetAfter(command, {view.scrollX, HorizontalLimit(layout), kColumnStep, page}, position);
  return x ? ScrollColumnsTo(view, context, *x) : Effects();
}

BarRange RangeOfBar(int64_t limit, int page, int64_t position) {
  const int64_t step = PixelsOfBarStep(limit, page);
  return {.last = static_cast<int>((limit + page) / step) - 1,
          .page = static_cast<int>(page / step),
          .position = static_cast<int>(position / step)};
}

Effects PanRows(SearchView& view, const ViewContext& context, const PanEvent& event) {
  if (event.isFirst) view.list.panPoint = event.at;
  const Point former = std::exchange(view.list.panPoint, event.at);
  MarkScroll(view, context);
  Effects effects = ScrollTo(view, context, view.scrollY + former.y - event.at.y);
  effects.Join(ScrollColumnsTo(view, context, int64_t{view.scrollX} + former.x - event.at.x));
  return effects;
}

}  // namespace quilmark
