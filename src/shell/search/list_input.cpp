#include "shell/search/list_input.h"

#include "search/filtered_results.h"
#include "shell/app/window_timers.h"
#include "shell/search/result_messages.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint64_t kLeastRenameMs = 500, kMostRenameMs = 1'200;
constexpr uint32_t kWheelSettleMs = 400, kBurstRepaintMs = 12;
constexpr int kNotch = 120, kNotchPixels = 100, kNotchSideways = 40;

bool IsSlowSecondClick(const ListState& list, const RowPress& press) {
  const uint64_t passed = press.nowMs - list.lastClickMs;
  return press.isNameColumn && press.row == list.lastClickRow && press.row == list.selection.focusRow &&
         passed >= kLeastRenameMs && passed <= kMostRenameMs;
}

void SelectByPress(Selection& selection, const RowPress& press) {
  const bool isInSet =
      selection.rows.size() > 1 && selection.rows.contains(static_cast<uint64_t>(press.row));
  if (press.shift) return SelectRange(selection, press.row);
  if (press.ctrl) return SelectToggle(selection, press.row);
  if (!isInSet) return SelectOnly(selection, press.row);
  // The set stays, so that it can be dragged.
  selection.focusRow = selection.anchorRow = press.row;
}

}  // namespace

int TakeTurn(int& rest, int64_t turned) {
  if ((rest < 0) != (turned < 0)) rest = 0;  // the other way round begins anew
  const int64_t all = rest + turned;
  rest = static_cast<int>(all % kNotch);
  return static_cast<int>(all / kNotch);
}

PressOutcome PressRow(ListState& list, const RowPress& press) {
  if (press.row < 0) {
    if (press.shift || press.ctrl) return PressOutcome::kNothing;
    ClearSelection(list.selection);
    return PressOutcome::kSelected;
  }
  if (IsSlowSecondClick(list, press)) {
    list.lastClickRow = -1;
    return PressOutcome::kRename;
  }
  SelectByPress(list.selection, press);
  list.lastClickRow = press.isNameColumn ? press.row : -1;
  list.lastClickMs = press.nowMs;
  return PressOutcome::kSelected;
}

void DoublePressRow(ListState& list, int64_t row) {
  list.selection.focusRow = row;
  list.lastClickRow = -1;
}

void ScrollTo(AppState& app, WindowPort& window, const ListLayout& layout, int64_t y, uint64_t nowMs) {
  const int64_t clamped = ClampScroll(layout, y, DisplayCount);
  if (clamped == app.scrollY) return;
  app.scrollY = clamped;
  window.MoveRename();
  app.list.hoverRow = -1;  // until the list rests: another row stands there now
  const bool isBurst = !app.thumbDragging && IsScrolling(app, nowMs);
  if (isBurst) return RequestListRepaint(app, window, kBurstRepaintMs, nowMs);
  window.RelayoutList();
  window.InvalidateList();
}

void ScrollByWheel(AppState& app, WindowPort& window, const ListLayout& layout, int delta,
                   uint64_t nowMs) {
  app.lastScrollTick = nowMs;
  window.StartTimer(kTimerScrollSettle, kWheelSettleMs);
  const int pixels = TakeTurn(app.list.wheelRest, delta * kNotchPixels);
  ScrollTo(app, window, layout, app.scrollY - pixels, nowMs);
}

void ScrollSideways(AppState& app, WindowPort& window, const ListLayout& layout, int delta,
                    uint64_t nowMs) {
  const int pixels = TakeTurn(app.list.tiltRest, delta * kNotchSideways);
  const int clamped = ClampHorizontal(layout, app.scrollX + pixels);
  if (clamped == app.scrollX) return;
  app.scrollX = clamped;
  window.MoveRename();
  app.lastScrollTick = nowMs;
  window.StartTimer(kTimerScrollSettle, kWheelSettleMs);
  RequestListRepaint(app, window, kBurstRepaintMs, nowMs);
}

void MoveThumb(AppState& app, WindowPort& window, const ListLayout& layout, Point cursor,
               uint64_t nowMs) {
  if (app.list.dragBar == Bar::kVertical) {
    const auto bar = VerticalBar(layout, app.scrollY, DisplayCount);
    if (!bar) return;
    app.lastScrollTick = nowMs;
    ScrollTo(app, window, layout,
             DragToOffset(*bar, Bar::kVertical, cursor.y, ScrollLimit(layout, DisplayCount)), nowMs);
  } else if (app.list.dragBar == Bar::kHorizontal) {
    const auto bar = HorizontalBar(layout, app.scrollX);
    if (!bar) return;
    const int limit = layout.columnsWidth - Width(layout.rows);
    app.scrollX =
        ClampHorizontal(layout, static_cast<int>(DragToOffset(*bar, Bar::kHorizontal, cursor.x, limit)));
    window.MoveRename();
    RequestListRepaint(app, window, kBurstRepaintMs, nowMs);
  }
}

}  // namespace quilmark
