#include "shell/search/list_scroll.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "search/filtered_results.h"
#include "shell/app/window_timers.h"
#include "shell/search/list_input.h"
#include "shell/search/result_messages.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

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

void MarkScroll(AppState& app, WindowPort& window, uint64_t nowMs) {
  app.lastScrollTick = nowMs;
  window.StartTimer(kTimerScrollSettle, kSettleMs);
}

int HorizontalLimit(const ListLayout& layout) {
  return ClampHorizontal(layout, std::numeric_limits<int>::max());
}

void ScrollColumnsTo(AppState& app, WindowPort& window, const ListLayout& layout, int64_t x,
                     uint64_t nowMs) {
  const auto clamped = static_cast<int>(std::clamp<int64_t>(x, 0, HorizontalLimit(layout)));
  if (clamped == app.scrollX) return;
  app.scrollX = clamped;
  window.MoveRename();
  MarkScroll(app, window, nowMs);
  RequestListRepaint(app, window, kRepaintMs, nowMs);
}

}  // namespace

int64_t PixelsOfBarStep(int64_t limit, int page) {
  int64_t step = 1;
  while ((limit + page) / step > std::numeric_limits<int32_t>::max()) step *= 2;
  return step;
}

void ScrollRows(AppState& app, WindowPort& window, const ListLayout& layout, ScrollCommand command,
                int64_t position, uint64_t nowMs) {
  const int64_t limit = ScrollLimit(layout, DisplayCount);
  const int height = Height(layout.rows);
  const int64_t page = std::max(height - layout.pitch, layout.pitch);
  const auto y = OffsetAfter(
      command, {app.scrollY, limit, layout.pitch, page, PixelsOfBarStep(limit, height)}, position);
  if (!y) return;
  MarkScroll(app, window, nowMs);
  ScrollTo(app, window, layout, *y, nowMs);
}

void ScrollColumns(AppState& app, WindowPort& window, const ListLayout& layout, ScrollCommand command,
                   int64_t position, uint64_t nowMs) {
  const int64_t page = std::max(Width(layout.rows) - kColumnStep, kColumnStep);
  const auto x =
      OffsetAfter(command, {app.scrollX, HorizontalLimit(layout), kColumnStep, page}, position);
  if (x) ScrollColumnsTo(app, window, layout, *x, nowMs);
}

BarRange RangeOfBar(int64_t limit, int page, int64_t position) {
  const int64_t step = PixelsOfBarStep(limit, page);
  return {.last = static_cast<int>((limit + page) / step) - 1,
          .page = static_cast<int>(page / step),
          .position = static_cast<int>(position / step)};
}

void BeginPan(AppState& app, Point finger) { app.list.panPoint = finger; }

void PanTo(AppState& app, WindowPort& window, const ListLayout& layout, Point finger, uint64_t nowMs) {
  const Point former = std::exchange(app.list.panPoint, finger);
  MarkScroll(app, window, nowMs);
  ScrollTo(app, window, layout, app.scrollY + former.y - finger.y, nowMs);
  ScrollColumnsTo(app, window, layout, int64_t{app.scrollX} + former.x - finger.x, nowMs);
}

}  // namespace quilmark
