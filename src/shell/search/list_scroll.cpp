#include "shell/search/list_scroll.h"

#include "shell/search/rename.h"
#include "shell/search/search_places.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint64_t kScrollRestMs = 350;
constexpr uint32_t kSettleMs = 400, kRepaintMs = 12;

void MarkScroll(SearchView& view, const ViewContext& context) {
  view.lastScrollTick = context.nowMs;
  context.window.StartTimer(kTimerScrollSettle, kSettleMs);
}

// True if an offset has changed: the list asks for its bars then, and only then.
bool HasMoved(const Effects& moved) { return moved.syncsBars; }

}  // namespace

bool IsScrolling(const SearchView& view, uint64_t nowMs) {
  return view.thumbDragging || nowMs - view.lastScrollTick < kScrollRestMs;
}

Effects RequestListRepaint(SearchView& view, const ViewContext& context, uint32_t delayMs) {
  return RequestRepaint(view.repaint, context, ListAreaOf(view, context), delayMs);
}

Effects FollowScroll(SearchView& view, const ViewContext& context, const Effects& moved) {
  if (!HasMoved(moved)) return {};
  const bool isSideways = view.rows.dragBar == Bar::kHorizontal;
  const bool isBurst = isSideways || (!view.thumbDragging && IsScrolling(view, context.nowMs));
  Effects effects = isBurst ? MoveRename(view, context) : RelayoutList(view, context);
  effects.Join(isBurst ? RequestListRepaint(view, context, kRepaintMs)
                       : Effects{.dirty = ListAreaOf(view, context)});
  return effects;
}

Effects ScrollByWheel(SearchView& view, const ViewContext& context, int delta) {
  MarkScroll(view, context);
  return FollowScroll(view, context, view.rows.Wheel(delta));
}

Effects ScrollSideways(SearchView& view, const ViewContext& context, int delta) {
  const Effects moved = view.rows.Tilt(delta);
  if (HasMoved(moved)) MarkScroll(view, context);
  return FollowScroll(view, context, moved);
}

Effects ScrollByCommand(SearchView& view, const ViewContext& context, const ScrollEvent& event) {
  const Effects moved = view.rows.Scroll(event);
  const bool isAsked = event.isVertical && event.command != ScrollCommand::kDone;
  if (isAsked || HasMoved(moved)) MarkScroll(view, context);
  return FollowScroll(view, context, moved);
}

Effects MoveThumb(SearchView& view, const ViewContext& context, Point cursor) {
  if (view.rows.dragBar == Bar::kVertical) view.lastScrollTick = context.nowMs;
  return FollowScroll(view, context, view.rows.Move(cursor));
}

Effects PanRows(SearchView& view, const ViewContext& context, const PanEvent& event) {
  if (!event.isFirst) MarkScroll(view, context);
  return FollowScroll(view, context, view.rows.Pan(event));
}

}  // namespace quilmark
