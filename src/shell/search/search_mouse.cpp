#include "shell/search/search_mouse.h"

#include <algorithm>
#include <utility>

#include "config/window_settings.h"
#include "search/filtered_results.h"
#include "shell/search/filter_request.h"
#include "shell/search/list_input.h"
#include "shell/search/list_scroll.h"
#include "shell/search/rename.h"
#include "shell/search/result_messages.h"
#include "shell/search/search_places.h"
#include "shell/search/sort_request.h"
#include "shell/search/tip_text.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint64_t kStaleMs = 1'000;
constexpr uint32_t kTrackSettleMs = 220, kReleaseSettleMs = 350, kDragRepaintMs = 16;

Bar BarAt(const SearchView& view, const ListLayout& layout, Point point) {
  const auto vertical = VerticalBar(layout, view.scrollY, DisplayCount);
  if (vertical && Holds(vertical->track, point)) return Bar::kVertical;
  const auto horizontal = HorizontalBar(layout, view.scrollX);
  return horizontal && Holds(horizontal->track, point) ? Bar::kHorizontal : Bar::kNone;
}

std::optional<Scrollbar> PlaceBar(const SearchView& view, const ListLayout& layout, Bar kind) {
  if (kind == Bar::kNone) return std::nullopt;
  return kind == Bar::kVertical ? VerticalBar(layout, view.scrollY, DisplayCount)
                                : HorizontalBar(layout, view.scrollX);
}

bool IsDragging(const ListState& list) {
  return list.dragsSidebar || list.dragColumn >= 0 || list.dragBar != Bar::kNone;
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

// What shows that the mouse is over a row, or over a bar.
Rect HoverPlace(const SearchView& view, const ListLayout& layout) {
  if (view.list.hoverRow >= 0) {
    const Rect row = PlaceOfRow(layout, view.scrollY, static_cast<uint64_t>(view.list.hoverRow));
    return Intersection(row, layout.rows);
  }
  const auto bar = PlaceBar(view, layout, view.list.hoverBar);
  return bar ? bar->track : Rect();
}

Effects TakeHover(SearchView& view, const ViewContext& context, const ListLayout& layout, Point point) {
  ListState& list = view.list;
  Effects effects;
  if (CurrentWindowSettings.sidebarLayout) {
    const int tag = SidebarTagAt(view, context, point);
    if (tag != std::exchange(list.hoverTag, tag)) effects.Join(RedrawTags(view, context));
  }
  const Bar bar = BarAt(view, layout, point);
  const int64_t row = bar == Bar::kNone ? RowAt(layout, view.scrollY, DisplayCount, point) : int64_t{-1};
  const int column = row >= 0 ? ColumnAt(layout, view.scrollX, point.x) : -1;
  const bool isElsewhere = bar != list.hoverBar || row != list.hoverRow;
  if (isElsewhere || column != list.hoverColumn) effects.tip = u"";
  const Rect former = HoverPlace(view, layout);
  list.hoverBar = bar;
  list.hoverRow = row;
  list.hoverColumn = column;
  if (!isElsewhere) return effects;
  // Rows that others have renamed or filled meanwhile tell nobody: now and then all are drawn anew.
  if (context.nowMs - view.listPaintedMs >= kStaleMs) {
    effects.Join(RequestListRepaint(view, context, kDragRepaintMs));
  } else {
    effects.Join(RequestRepaintOf(view.repaint, context, ListAreaOf(view, context),
                                  Union(former, HoverPlace(view, layout)), kDragRepaintMs));
  }
  return effects;
}

Effects Hover(SearchView& view, const ViewContext& context, const ListLayout& layout, Point point) {
  Effects effects = TakeHover(view, context, layout, point);
  effects.tracksMouse = true;
  return effects;
}

Effects DragSidebar(SearchView& view, const ViewContext& context, Point point) {
  view.sidebarScroll = SidebarDragTo(PlaceSidebar(view, context), point.y);
  Effects effects = RedrawTags(view, context);
  effects.syncsBars = true;
  return effects;
}

Effects PressBar(SearchView& view, const ViewContext& context, const ListLayout& layout, Bar kind,
                 Point point) {
  view.lastScrollTick = context.nowMs;
  context.window.StartTimer(kTimerScrollSettle, kTrackSettleMs);
  const auto bar = PlaceBar(view, layout, kind);
  view.list.dragBar = kind;
  if (bar && Holds(bar->thumb, point)) {
    view.thumbDragging = kind == Bar::kVertical;
    return {.capture = Capture::kTake};
  }
  Effects effects = MoveThumb(view, context, point);
  view.list.dragBar = Bar::kNone;
  return effects;
}

Effects PressHeader(SearchView& view, const ViewContext& context, const ListLayout& layout,
                    Point point) {
  const int edge = ColumnEdgeAt(layout, view.scrollX, point);
  if (edge >= 0) {
    view.list.dragColumn = edge;
    view.list.dragColumnX = point.x - layout.rows.left + view.scrollX;
    view.list.dragColumnWidth = CurrentWindowSettings.columnWidth[static_cast<size_t>(edge)];
    return {.capture = Capture::kTake};
  }
  const int column = ColumnAt(layout, view.scrollX, point.x);
  return column > 0 ? RequestSort(view, context, column, Direction::kByClick) : Effects();
}

Effects PressRows(SearchView& view, const ViewContext& context, const ListLayout& layout,
                  const MouseEvent& event) {
  const bool isName = layout.view != ViewMode::kList || ColumnAt(layout, view.scrollX, event.at.x) == 1;
  const RowPress press = {.row = RowAt(layout, view.scrollY, DisplayCount, event.at),
                          .isNameColumn = isName,
                          .shift = event.shift,
                          .ctrl = event.ctrl,
                          .nowMs = context.nowMs};
  const PressOutcome outcome = PressRow(view.list, press);
  if (outcome == PressOutcome::kRename) return OpenRename(view, context);
  if (outcome != PressOutcome::kSelected) return {};
  return {.focus = press.row >= 0 ? Focus::kWindow : Focus::kKeep, .dirty = ListAreaOf(view, context)};
}

Effects Press(SearchView& view, const ViewContext& context, const MouseEvent& event) {
  const ListLayout layout = PlaceList(view, context);
  if (CurrentWindowSettings.sidebarLayout && Holds(PlaceSidebar(view, context).track, event.at)) {
    view.list.dragsSidebar = true;
    Effects effects = DragSidebar(view, context, event.at);
    effects.capture = Capture::kTake;
    return effects;
  }
  const int tag = SidebarTagAt(view, context, event.at);
  if (tag >= 0) return SelectFilterTag(view, context, tag);
  const Bar bar = BarAt(view, layout, event.at);
  if (bar != Bar::kNone) return PressBar(view, context, layout, bar, event.at);
  if (Holds(layout.header, event.at)) return PressHeader(view, context, layout, event.at);
  const bool isBelow = event.at.y >= layout.rows.top && event.at.x >= layout.rows.left;
  return isBelow ? PressRows(view, context, layout, event) : Effects();
}

Effects Double(SearchView& view, const ViewContext& context, const MouseEvent& event) {
  const int64_t row = RowAt(PlaceList(view, context), view.scrollY, DisplayCount, event.at);
  // Two quick presses of a scrollbar or a header are two presses.
  if (row < 0) return Press(view, context, event);
  DoublePressRow(view.list, row);
  return {};
}

Effects DragColumn(SearchView& view, const ViewContext& context, const ListLayout& layout, Point point) {
  int& width = CurrentWindowSettings.columnWidth[static_cast<size_t>(view.list.dragColumn)];
  const int wanted = DraggedWidth(view.list.dragColumnWidth, view.list.dragColumnX,
                                  point.x - layout.rows.left + view.scrollX);
  if (wanted == width) return {};
  width = wanted;
  Effects effects = MoveRename(view, context);
  effects.Join(RequestListRepaint(view, context, kDragRepaintMs));
  return effects;
}

Effects Move(SearchView& view, const ViewContext& context, Point point) {
  ListState& list = view.list;
  if (list.dragsSidebar) return DragSidebar(view, context, point);
  const ListLayout layout = PlaceList(view, context);
  if (list.dragBar == Bar::kNone && list.dragColumn < 0) return Hover(view, context, layout, point);
  return list.dragBar != Bar::kNone ? MoveThumb(view, context, point)
                                    : DragColumn(view, context, layout, point);
}

// What was held is let go of.
Effects EndDrags(SearchView& view, const ViewContext& context) {
  Effects effects;
  if (std::exchange(view.list.dragsSidebar, false)) effects.Join(RedrawTags(view, context));
  if (std::exchange(view.list.dragColumn, -1) >= 0) {
    effects.Join(RelayoutList(view, context));
    effects.dirty = ListAreaOf(view, context);
    SaveWindowSettings(context.window.Placement());
  }
  if (std::exchange(view.list.dragBar, Bar::kNone) != Bar::kNone) {
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
  if (view.list.dragColumn >= 0) {
    effects = DragColumn(view, context, PlaceList(view, context), point);
  }
  effects.Join(EndDrags(view, context));
  effects.capture = Capture::kRelease;
  return effects;
}

Effects Rest(SearchView& view, const ViewContext& context, Point point) {
  if (IsDragging(view.list) || context.isTipShown) return {};
  Effects effects = TakeHover(view, context, PlaceList(view, context), point);
  const auto kind = static_cast<ViewMode>(CurrentWindowSettings.viewMode);
  const Tip tip = TipOfCell(kind, view.list.hoverRow, view.list.hoverColumn);
  effects.tip = tip.text;
  if (tip.isMissing && !IsScrolling(view, context.nowMs)) RequestAttributes(view, context);
  return effects;
}

Effects Leave(SearchView& view, const ViewContext& context) {
  ListState& list = view.list;
  Effects effects{.tip = u""};
  if (list.hoverRow >= 0 || list.hoverBar != Bar::kNone) effects.dirty = ListAreaOf(view, context);
  list.hoverRow = -1;
  list.hoverColumn = -1;
  list.hoverBar = Bar::kNone;
  if (std::exchange(list.hoverTag, -1) >= 0) effects.Join(RedrawTags(view, context));
  context.window.TrimSelf();
  return effects;
}

// By whole categories, and never the list.
Effects TurnSidebar(SearchView& view, const ViewContext& context, Point point, int delta) {
  const SidebarLayout sidebar = PlaceSidebar(view, context);
  const int rows = TakeTurn(view.list.sidebarRest, delta);
  view.sidebarScroll = std::clamp(sidebar.first - rows, 0, sidebar.scrollLimit);
  Effects effects = Hover(view, context, PlaceList(view, context), point);
  effects.syncsBars = true;
  effects.Join(RedrawTags(view, context));
  return effects;
}

Effects Turn(SearchView& view, const ViewContext& context, const MouseEvent& event) {
  const bool isOverSidebar = CurrentWindowSettings.sidebarLayout && event.at.x < view.sidebarWidth &&
                             event.at.y >= view.headerTop;
  const bool isTable = static_cast<ViewMode>(CurrentWindowSettings.viewMode) == ViewMode::kList;
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
    case Mouse::kMove:
      return Move(view, context, event.at);
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
  view.list.hoverRow = -1;
  view.list.hoverColumn = -1;
  Effects effects;
  if (mouse && !IsDragging(view.list)) effects = Hover(view, context, PlaceList(view, context), *mouse);
  effects.tip = u"";
  return effects;
}

bool IsColumnEdge(const SearchView& view, const ViewContext& context, Point point) {
  if (view.list.dragColumn >= 0) return true;
  const ListLayout layout = PlaceList(view, context);
  return BarAt(view, layout, point) == Bar::kNone && ColumnEdgeAt(layout, view.scrollX, point) >= 0;
}

}  // namespace quilmark
