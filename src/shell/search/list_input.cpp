#include "shell/search/list_input.h"

#include "search/filtered_results.h"
#include "shell/search/list_scroll.h"
#include "shell/search/rename.h"
#include "shell/search/search_places.h"
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

Effects ScrollByWheel(SearchView& view, const ViewContext& context, int delta) {
  view.lastScrollTick = context.nowMs;
  context.window.StartTimer(kTimerScrollSettle, kWheelSettleMs);
  const int pixels = TakeTurn(view.list.wheelRest, delta * kNotchPixels);
  return ScrollTo(view, context, view.scrollY - pixels);
}

Effects ScrollSideways(SearchView& view, const ViewContext& context, int delta) {
  const int pixels = TakeTurn(view.list.tiltRest, delta * kNotchSideways);
  const int clamped = ClampHorizontal(PlaceList(view, context), view.scrollX + pixels);
  if (clamped == view.scrollX) return {};
  view.scrollX = clamped;
  view.lastScrollTick = context.nowMs;
  context.window.StartTimer(kTimerScrollSettle, kWheelSettleMs);
  Effects effects = MoveRename(view, context);
  effects.Join(RequestListRepaint(view, context, kBurstRepaintMs));
  return effects;
}

Effects MoveThumb(SearchView& view, const ViewContext& context, Point cursor) {
  const ListLayout layout = PlaceList(view, context);
  if (view.list.dragBar == Bar::kVertical) {
    const auto bar = VerticalBar(layout, view.scrollY, DisplayCount);
    if (!bar) return {};
    view.lastScrollTick = context.nowMs;
    return ScrollTo(view, context,
                    DragToOffset(*bar, Bar::kVertical, cursor.y, ScrollLimit(layout, DisplayCount)));
  }
  const auto bar = HorizontalBar(layout, view.scrollX);
  if (view.list.dragBar != Bar::kHorizontal || !bar) return {};
  const int limit = layout.columnsWidth - Width(layout.rows);
  view.scrollX =
      ClampHorizontal(layout, static_cast<int>(DragToOffset(*bar, Bar::kHorizontal, cursor.x, limit)));
  Effects effects = MoveRename(view, context);
  effects.Join(RequestListRepaint(view, context, kBurstRepaintMs));
  return effects;
}

}  // namespace quilmark
