#include "shell/search/search_mouse.h"

#include <algorithm>
#include <utility>

#include "config/window_settings.h"
#include "shell/search/filter_request.h"
#include "shell/search/list_scroll.h"
#include "shell/search/rename.h"
#include "shell/search/result_messages.h"
#include "shell/search/row_press.h"
#include "shell/search/search_commands.h"
#include "shell/search/search_places.h"
#include "shell/search/seen_rows.h"
#include "shell/search/sort_request.h"
#include "shell/search/tip_text.h"
#include "shell/view/commands.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint64_t kStaleMs = 1'000;
constexpr uint32_t kTrackSettleMs = 220, kReleaseSettleMs = 350, kDragRepaintMs = 16;

bool IsDragging(const SearchView& view) {
  return view.list.dragsSidebar || view.list.dragColumn >= 0 || view.rows.dragBar != Bar::kNone;
}

// The category of the sidebar under a point, or -1.
int SidebarTagAt(const SearchView& view, const ViewContext& context, Point point) {
  if (!CurrentWindowSettings.sidebarLayout) return -1;
  const SidebarLayout sidebar = PlaceSidebar(view, context);
  for (size_t i = 0; i < sidebar.rows.size(); ++i) {
    if (Holds(sidebar.rows[i], point)) return sidebar.first + static_cast<int>(i);
  }
  return -1;
}

enum class Repaint { kAsked, kComes };

// kComes: all of the list will be painted in a while, so that a row of it need not be painted now.
Effects TakeHover(SearchView& view, const ViewContext& context, Point point,
                  Repaint repaint = Repaint::kAsked) {
  ListState& list = view.list;
  ListView& rows = view.rows;
  Effects effects;
  if (CurrentWindowSettings.sidebarLayout) {
    const int tag = SidebarTagAt(view, context, point);
    if (tag != std::exchange(list.hoverTag, tag)) effects.Join(RedrawTags(view, context));
  }
  if (rows.dragBar != Bar::kNone) return effects;  // a wheel turns over the sidebar meanwhile
  const std::pair former(rows.hoverRow, rows.hoverBar);
  const Effects moved = rows.Move(point);
  const bool isElsewhere = former != std::pair(rows.hoverRow, rows.hoverBar);
  const int column =
      rows.hoverRow >= 0 ? ColumnAt(PlaceColumns(view, context), rows.scrollX, point.x) : -1;
  if (column != std::exchange(list.hoverColumn, column) || isElsewhere) effects.tip = u"";
  if (!isElsewhere || repaint == Repaint::kComes) return effects;
  // Names and attributes change without a message to the list: now and then all rows are painted anew.
  const bool isStale = context.nowMs - view.listPaintedMs >= kStaleMs;
  effects.Join(isStale ? RequestListRepaint(view, context, kDragRepaintMs)
                       : RequestRepaintOf(view.repaint, context, ListAreaOf(view, context), moved.dirty,
                                          kDragRepaintMs));
  return effects;
}

Effects Hover(SearchView& view, const ViewContext& context, Point point,
              Repaint repaint = Repaint::kAsked) {
  Effects effects = TakeHover(view, context, point, repaint);
  effects.tracksMouse = true;
  return effects;
}

Effects DragSidebar(SearchView& view, const ViewContext& context, Point point) {
  view.sidebarScroll = SidebarDragTo(PlaceSidebar(view, context), point.y);
  Effects effects = RedrawTags(view, context);
  effects.syncsBars = true;
  return effects;
}

Effects FollowBarPress(SearchView& view, const ViewContext& context, const ListPress& press) {
  view.lastScrollTick = context.nowMs;
  context.window.StartTimer(kTimerScrollSettle, kTrackSettleMs);
  Effects effects = FollowScroll(view, context, press.effects);
  effects.capture = press.effects.capture;
  return effects;
}

Effects PressHeader(SearchView& view, const ViewContext& context, const ColumnsLayout& layout,
                    Point point) {
  const int edge = ColumnEdgeAt(layout, view.rows.scrollX, point);
  if (edge >= 0) {
    view.list.dragColumn = edge;
    view.list.dragColumnX = point.x - layout.rows.left + view.rows.scrollX;
    view.list.dragColumnWidth = CurrentWindowSettings.columnWidth[static_cast<size_t>(edge)];
    return {.capture = Capture::kTake};
  }
  const int column = ColumnAt(layout, view.rows.scrollX, point.x);
  return column > 0 ? RequestSort(view, context, column, Direction::kByClick) : Effects();
}

Effects PressRows(SearchView& view, const ViewContext& context, const ColumnsLayout& layout,
                  const MouseEvent& event, int64_t row) {
  const bool isName =
      layout.view != ViewMode::kList || ColumnAt(layout, view.rows.scrollX, event.at.x) == 1;
  BeginChoice(view);
  const PressOutcome outcome = PressRow(view.list, {.row = row,
                                                    .isNameColumn = isName,
                                                    .shift = event.shift,
                                                    .ctrl = event.ctrl,
                                                    .nowMs = context.nowMs});
  if (outcome == PressOutcome::kRename) return OpenRename(view, context);
  if (row >= 0) view.list.pressedAt = event.at;
  if (outcome != PressOutcome::kSelected) return {};
  return {.focus = row >= 0 ? Focus::kWindow : Focus::kKeep, .dirty = ListAreaOf(view, context)};
}

Effects PressList(SearchView& view, const ViewContext& context, const MouseEvent& event) {
  const ListPress press = view.rows.Press(event.at);
  view.thumbDragging = view.rows.dragBar == Bar::kVertical;
  if (press.bar != Bar::kNone) return FollowBarPress(view, context, press);
  const ColumnsLayout layout = PlaceColumns(view, context);
  if (Holds(layout.header, event.at)) return PressHeader(view, context, layout, event.at);
  const bool isBelow = event.at.y >= layout.rows.top && event.at.x >= layout.rows.left;
  return isBelow ? PressRows(view, context, layout, event, press.row) : Effects();
}

Effects Press(SearchView& view, const ViewContext& context, const MouseEvent& event) {
  if (CurrentWindowSettings.sidebarLayout && Holds(PlaceSidebar(view, context).track, event.at)) {
    view.list.dragsSidebar = true;
    Effects effects = DragSidebar(view, context, event.at);
    effects.capture = Capture::kTake;
    return effects;
  }
  const int tag = SidebarTagAt(view, context, event.at);
  return tag >= 0 ? SelectFilterTag(view, context, tag) : PressList(view, context, event);
}

Effects Double(SearchView& view, const ViewContext& context, const MouseEvent& event) {
  const int64_t row = view.rows.RowAt(event.at);
  // A double click on a scrollbar or a header counts as two presses.
  if (row < 0) return Press(view, context, event);
  DoublePressRow(view.list, row);
  return {.command = kCommandOpen};
}

Effects DragColumn(SearchView& view, const ViewContext& context, Point point) {
  int& width = CurrentWindowSettings.columnWidth[static_cast<size_t>(view.list.dragColumn)];
  const ListView& rows = view.rows;
  const int wanted = DraggedWidth(view.list.dragColumnWidth, view.list.dragColumnX,
                                  point.x - rows.Grid().rows.left + rows.scrollX);
  if (wanted == width) return {};
  width = wanted;
  PlaceList(view, context);
  Effects effects = MoveRename(view, context);
  effects.Join(RequestListRepaint(view, context, kDragRepaintMs));
  return effects;
}

// True once for a press on a row that has become a drag of the chosen ones.
bool TakeDrag(ListState& list, const ViewContext& context, const MouseEvent& event) {
  if (!event.isHeld) list.pressedAt.reset();  // it was let go over another window
  if (!list.pressedAt) return false;
  const Point from = *list.pressedAt, step = context.dragStep;
  if (std::abs(event.at.x - from.x) < step.x && std::abs(event.at.y - from.y) < step.y) return false;
  list.pressedAt.reset();
  return true;
}

Effects Move(SearchView& view, const ViewContext& context, const MouseEvent& event) {
  if (view.list.dragsSidebar) return DragSidebar(view, context, event.at);
  if (view.rows.dragBar != Bar::kNone) return MoveThumb(view, context, event.at);
  if (view.list.dragColumn >= 0) return DragColumn(view, context, event.at);
  Effects effects = Hover(view, context, event.at);
  if (TakeDrag(view.list, context, event)) effects.Join({.tip = u"", .command = kCommandDrag});
  return effects;
}

// Lets go of the bar, the column or the thumb that is held.
Effects EndDrags(SearchView& view, const ViewContext& context) {
  Effects effects;
  view.list.pressedAt.reset();
  if (std::exchange(view.list.dragsSidebar, false)) effects.Join(RedrawTags(view, context));
  if (std::exchange(view.list.dragColumn, -1) >= 0) {
    effects.Join(RelayoutList(view, context));
    effects.dirty = ListAreaOf(view, context);
    SaveWindowSettings(context.window.Placement());
  }
  if (view.rows.dragBar != Bar::kNone) {
    (void)view.rows.Lose();  // all of the list is repainted anyway
    view.thumbDragging = false;
    view.lastScrollTick = context.nowMs;
    effects.Join(RelayoutList(view, context));
    context.window.StartTimer(kTimerScrollSettle, kReleaseSettleMs);
    effects.Join(RequestListRepaint(view, context, kDragRepaintMs));
  }
  return effects;
}

Effects Release(SearchView& view, const ViewContext& context, Point point) {
  Effects effects;
  // A column ends where the button was let go, which need not be where the last move was.
  if (view.list.dragColumn >= 0) effects = DragColumn(view, context, point);
  effects.Join(EndDrags(view, context));
  effects.capture = Capture::kRelease;
  return effects;
}

Effects Rest(SearchView& view, const ViewContext& context, Point point) {
  if (IsDragging(view) || context.isTipShown) return {};
  Effects effects = TakeHover(view, context, point);
  const Tip tip = TipOfCell(ViewModeOfSettings(), view.rows.hoverRow, view.list.hoverColumn);
  effects.tip = tip.text;
  if (tip.isMissing && !IsScrolling(view, context.nowMs)) RequestAttributes(view);
  return effects;
}

Effects Leave(SearchView& view, const ViewContext& context) {
  Effects effects{.tip = u""};
  if (!IsEmpty(view.rows.Leave().dirty)) effects.dirty = ListAreaOf(view, context);
  view.list.hoverColumn = -1;
  if (std::exchange(view.list.hoverTag, -1) >= 0) effects.Join(RedrawTags(view, context));
  context.window.TrimSelf();
  return effects;
}

// Scrolls the sidebar by whole tags, and never the list.
Effects TurnSidebar(SearchView& view, const ViewContext& context, Point point, int delta) {
  const SidebarLayout sidebar = PlaceSidebar(view, context);
  const auto rows = static_cast<int>(TakeTurn(view.list.sidebarRest, delta));
  view.sidebarScroll = std::clamp(sidebar.first - rows, 0, sidebar.scrollLimit);
  Effects effects = Hover(view, context, point);
  effects.syncsBars = true;
  effects.Join(RedrawTags(view, context));
  return effects;
}

Effects Turn(SearchView& view, const ViewContext& context, const MouseEvent& event) {
  const bool isOverSidebar = CurrentWindowSettings.sidebarLayout && event.at.x < view.sidebarWidth &&
                             event.at.y >= view.headerTop;
  const bool isTable = ViewModeOfSettings() == ViewMode::kList;
  Effects effects;
  if (isOverSidebar) {
    effects = TurnSidebar(view, context, event.at, event.delta);
  } else if (event.shift && isTable) {
    effects = ScrollSideways(view, context, -event.delta);
  } else {
    effects = ScrollByWheel(view, context, event.delta);
  }
  effects.tip = u"";
  return effects;
}

Effects Tilt(SearchView& view, const ViewContext& context, int delta) {
  Effects effects = ScrollSideways(view, context, delta);
  effects.tip = u"";
  return effects;
}

}  // namespace

Effects OnSearchMouse(SearchView& view, const ViewContext& context, const MouseEvent& event) {
  switch (event.kind) {
    case Mouse::kPress:
      return Press(view, context, event);
    case Mouse::kDouble:
      return Double(view, context, event);
    case Mouse::kRelease:
      return Release(view, context, event.at);
    case Mouse::kRight:
      return IsDragging(view) ? Effects() : OpenContextMenu(view, context, event.at);
    case Mouse::kMove:
      return Move(view, context, event);
    case Mouse::kRest:
      return Rest(view, context, event.at);
    case Mouse::kLeave:
      return Leave(view, context);
    case Mouse::kLost:
      return EndDrags(view, context);
    case Mouse::kWheel:
      return Turn(view, context, event);
    case Mouse::kTilt:
      return Tilt(view, context, event.delta);
  }
  return {};
}

Effects RefreshHover(SearchView& view, const ViewContext& context, std::optional<Point> mouse) {
  view.rows.hoverRow = -1;
  view.list.hoverColumn = -1;
  const bool isDue = view.repaint.isPending && !view.repaint.only;
  Effects effects;
  if (mouse && !IsDragging(view)) {
    effects = Hover(view, context, *mouse, isDue ? Repaint::kComes : Repaint::kAsked);
  }
  effects.tip = u"";
  return effects;
}

bool IsColumnEdge(const SearchView& view, const ViewContext& context, Point point) {
  if (view.list.dragColumn >= 0) return true;
  return view.rows.BarAt(point) == Bar::kNone &&
         ColumnEdgeAt(PlaceColumns(view, context), view.rows.scrollX, point) >= 0;
}

}  // namespace quilmark
