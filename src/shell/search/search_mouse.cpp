#include "shell/search/search_mouse.h"

#include <algorithm>
#include <utility>

#include "config/window_settings.h"
#include "search/filtered_results.h"
#include "shell/app/window_timers.h"
#include "shell/search/filter_request.h"
#include "shell/search/list_input.h"
#include "shell/search/list_scroll.h"
#include "shell/search/result_messages.h"
#include "shell/search/search_places.h"
#include "shell/search/tip_text.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint64_t kStaleMs = 1'000;
constexpr uint32_t kTrackSettleMs = 220, kReleaseSettleMs = 350, kDragRepaintMs = 16;

// The parts of one call.
struct Call {
  AppState& app;
  WindowPort& window;
  const ViewContext& context;
};

Bar BarAt(const AppState& app, const ListLayout& layout, Point point) {
  const auto vertical = VerticalBar(layout, app.scrollY, DisplayCount);
  if (vertical && Holds(vertical->track, point)) return Bar::kVertical;
  const auto horizontal = HorizontalBar(layout, app.scrollX);
  return horizontal && Holds(horizontal->track, point) ? Bar::kHorizontal : Bar::kNone;
}

std::optional<Scrollbar> PlaceBar(const AppState& app, const ListLayout& layout, Bar kind) {
  if (kind == Bar::kNone) return std::nullopt;
  return kind == Bar::kVertical ? VerticalBar(layout, app.scrollY, DisplayCount)
                                : HorizontalBar(layout, app.scrollX);
}

bool IsDragging(const ListState& list) {
  return list.dragsSidebar || list.dragColumn >= 0 || list.dragBar != Bar::kNone;
}

// The category of the sidebar under a point, or -1.
int SidebarTagAt(const AppState& app, Point point) {
  if (!CurrentWindowSettings.sidebarLayout) return -1;
  const SidebarLayout sidebar = PlaceSidebar(app);
  for (size_t i = 0; i < sidebar.rows.size(); ++i) {
    if (Holds(sidebar.rows[i], point)) return sidebar.first + static_cast<int>(i);
  }
  return -1;
}

// What shows that the mouse is over a row, or over a bar.
Rect HoverPlace(const AppState& app, const ListLayout& layout) {
  if (app.list.hoverRow >= 0) {
    const Rect row = PlaceOfRow(layout, app.scrollY, static_cast<uint64_t>(app.list.hoverRow));
    return Intersection(row, layout.rows);
  }
  const auto bar = PlaceBar(app, layout, app.list.hoverBar);
  return bar ? bar->track : Rect();
}

void TakeHover(const Call& call, const ListLayout& layout, Point point, Effects& effects) {
  ListState& list = call.app.list;
  if (CurrentWindowSettings.sidebarLayout) {
    const int tag = SidebarTagAt(call.app, point);
    if (tag != std::exchange(list.hoverTag, tag)) call.window.RedrawTags();
  }
  const Bar bar = BarAt(call.app, layout, point);
  const int64_t row =
      bar == Bar::kNone ? RowAt(layout, call.app.scrollY, DisplayCount, point) : int64_t{-1};
  const int column = row >= 0 ? ColumnAt(layout, call.app.scrollX, point.x) : -1;
  const bool isElsewhere = bar != list.hoverBar || row != list.hoverRow;
  if (isElsewhere || column != list.hoverColumn) effects.tip = u"";
  const Rect former = HoverPlace(call.app, layout);
  list.hoverBar = bar;
  list.hoverRow = row;
  list.hoverColumn = column;
  if (!isElsewhere) return;
  const uint64_t nowMs = call.context.nowMs;
  // Rows that others have renamed or filled meanwhile tell nobody: now and then all are drawn anew.
  if (nowMs - call.app.listPaintedMs >= kStaleMs) {
    return RequestListRepaint(call.app, call.window, kDragRepaintMs, nowMs);
  }
  RequestRepaintOf(call.app, call.window, Union(former, HoverPlace(call.app, layout)), kDragRepaintMs,
                   nowMs);
}

Effects Hover(const Call& call, const ListLayout& layout, Point point) {
  Effects effects{.tracksMouse = true};
  TakeHover(call, layout, point, effects);
  return effects;
}

Effects DragSidebar(const Call& call, Point point) {
  call.app.sidebarScroll = SidebarDragTo(PlaceSidebar(call.app), point.y);
  call.window.RedrawTags();
  return {.syncsBars = true};
}

Effects PressBar(const Call& call, const ListLayout& layout, Bar kind, Point point) {
  call.app.lastScrollTick = call.context.nowMs;
  call.window.StartTimer(kTimerScrollSettle, kTrackSettleMs);
  const auto bar = PlaceBar(call.app, layout, kind);
  call.app.list.dragBar = kind;
  if (bar && Holds(bar->thumb, point)) {
    call.app.thumbDragging = kind == Bar::kVertical;
    return {.capture = Capture::kTake};
  }
  MoveThumb(call.app, call.window, layout, point, call.context.nowMs);
  call.app.list.dragBar = Bar::kNone;
  return {};
}

Effects PressHeader(const Call& call, const ListLayout& layout, Point point) {
  AppState& app = call.app;
  const int edge = ColumnEdgeAt(layout, app.scrollX, point);
  if (edge >= 0) {
    app.list.dragColumn = edge;
    app.list.dragColumnX = point.x - layout.rows.left + app.scrollX;
    app.list.dragColumnWidth = CurrentWindowSettings.columnWidth[static_cast<size_t>(edge)];
    return {.capture = Capture::kTake};
  }
  const int column = ColumnAt(layout, app.scrollX, point.x);
  if (column > 0 && app.features.sort) app.features.sort(column);
  return {};
}

Effects PressRows(const Call& call, const ListLayout& layout, const MouseEvent& event) {
  const bool isName =
      layout.view != ViewMode::kList || ColumnAt(layout, call.app.scrollX, event.at.x) == 1;
  const RowPress press = {.row = RowAt(layout, call.app.scrollY, DisplayCount, event.at),
                          .isNameColumn = isName,
                          .shift = event.shift,
                          .ctrl = event.ctrl,
                          .nowMs = call.context.nowMs};
  const PressOutcome outcome = PressRow(call.app.list, press);
  if (outcome == PressOutcome::kRename) return {.editor = Editor::kOpen};
  if (outcome != PressOutcome::kSelected) return {};
  call.window.InvalidateList();
  return {.focus = press.row >= 0 ? Focus::kWindow : Focus::kKeep};
}

Effects Press(const Call& call, const MouseEvent& event) {
  const ListLayout layout = PlaceList(call.app);
  if (CurrentWindowSettings.sidebarLayout && Holds(PlaceSidebar(call.app).track, event.at)) {
    call.app.list.dragsSidebar = true;
    Effects effects = DragSidebar(call, event.at);
    effects.capture = Capture::kTake;
    return effects;
  }
  const int tag = SidebarTagAt(call.app, event.at);
  if (tag >= 0) {
    SelectFilterTag(call.app, call.window, tag);
    return {};
  }
  const Bar bar = BarAt(call.app, layout, event.at);
  if (bar != Bar::kNone) return PressBar(call, layout, bar, event.at);
  if (Holds(layout.header, event.at)) return PressHeader(call, layout, event.at);
  const bool isBelow = event.at.y >= layout.rows.top && event.at.x >= layout.rows.left;
  return isBelow ? PressRows(call, layout, event) : Effects();
}

Effects Double(const Call& call, const MouseEvent& event) {
  const int64_t row = RowAt(PlaceList(call.app), call.app.scrollY, DisplayCount, event.at);
  // Two quick presses of a scrollbar or a header are two presses.
  if (row < 0) return Press(call, event);
  DoublePressRow(call.app.list, row);
  RunFeature(call.app.features.openFocused);
  return {};
}

void DragColumn(const Call& call, const ListLayout& layout, Point point) {
  AppState& app = call.app;
  int& width = CurrentWindowSettings.columnWidth[static_cast<size_t>(app.list.dragColumn)];
  const int wanted = DraggedWidth(app.list.dragColumnWidth, app.list.dragColumnX,
                                  point.x - layout.rows.left + app.scrollX);
  if (wanted == width) return;
  width = wanted;
  call.window.MoveRename();
  RequestListRepaint(app, call.window, kDragRepaintMs, call.context.nowMs);
}

Effects Move(const Call& call, Point point) {
  ListState& list = call.app.list;
  if (list.dragsSidebar) return DragSidebar(call, point);
  const ListLayout layout = PlaceList(call.app);
  if (list.dragBar == Bar::kNone && list.dragColumn < 0) return Hover(call, layout, point);
  if (list.dragBar != Bar::kNone) {
    MoveThumb(call.app, call.window, layout, point, call.context.nowMs);
  } else {
    DragColumn(call, layout, point);
  }
  return {};
}

// What was held is let go of.
Effects EndDrags(const Call& call) {
  AppState& app = call.app;
  Effects effects;
  if (std::exchange(app.list.dragsSidebar, false)) call.window.RedrawTags();
  if (std::exchange(app.list.dragColumn, -1) >= 0) {
    call.window.RelayoutList();
    call.window.InvalidateList();
    effects.savesSettings = true;
  }
  if (std::exchange(app.list.dragBar, Bar::kNone) != Bar::kNone) {
    app.thumbDragging = false;
    app.lastScrollTick = call.context.nowMs;
    call.window.RelayoutList();
    call.window.StartTimer(kTimerScrollSettle, kReleaseSettleMs);
    RequestListRepaint(app, call.window, kDragRepaintMs, call.context.nowMs);
  }
  return effects;
}

Effects Release(const Call& call, Point point) {
  // A column ends where the button was let go, which need not be where the last move was.
  if (call.app.list.dragColumn >= 0) DragColumn(call, PlaceList(call.app), point);
  Effects effects = EndDrags(call);
  effects.capture = Capture::kRelease;
  return effects;
}

Effects Rest(const Call& call, Point point, bool isTipShown) {
  Effects effects;
  if (IsDragging(call.app.list) || isTipShown) return effects;
  TakeHover(call, PlaceList(call.app), point, effects);
  const auto view = static_cast<ViewMode>(CurrentWindowSettings.viewMode);
  const Tip tip = TipOfCell(view, call.app.list.hoverRow, call.app.list.hoverColumn);
  effects.tip = tip.text;
  if (tip.isMissing && !IsScrolling(call.app, call.context.nowMs)) {
    RunFeature(call.app.features.requestAttributes);
  }
  return effects;
}

Effects Leave(const Call& call) {
  ListState& list = call.app.list;
  const bool isTagHovered = std::exchange(list.hoverTag, -1) >= 0;
  const bool isHovered = list.hoverRow >= 0 || list.hoverBar != Bar::kNone;
  list.hoverRow = -1;
  list.hoverColumn = -1;
  list.hoverBar = Bar::kNone;
  if (isHovered) call.window.InvalidateList();
  if (isTagHovered) call.window.RedrawTags();
  call.window.TrimSelf();
  return {.tip = u""};
}

// By whole categories, and never the list.
Effects TurnSidebar(const Call& call, Point point, int delta) {
  const SidebarLayout sidebar = PlaceSidebar(call.app);
  const int rows = TakeTurn(call.app.list.sidebarRest, delta);
  call.app.sidebarScroll = std::clamp(sidebar.first - rows, 0, sidebar.scrollLimit);
  Effects effects = Hover(call, PlaceList(call.app), point);
  effects.syncsBars = true;
  call.window.RedrawTags();
  return effects;
}

Effects Turn(const Call& call, const MouseEvent& event) {
  AppState& app = call.app;
  const bool isOverSidebar = CurrentWindowSettings.sidebarLayout && event.at.x < app.sidebarWidth &&
                             event.at.y >= app.headerTop;
  Effects effects;
  if (isOverSidebar) {
    effects = TurnSidebar(call, event.at, event.delta);
  } else if (const ListLayout layout = PlaceList(app); event.shift && layout.view == ViewMode::kList) {
    ScrollSideways(app, call.window, layout, -event.delta, call.context.nowMs);
  } else {
    ScrollByWheel(app, call.window, layout, event.delta, call.context.nowMs);
  }
  effects.tip = u"";
  return effects;
}

}  // namespace

Effects OnSearchMouse(AppState& app, WindowPort& window, const ViewContext& context,
                      const MouseEvent& event) {
  const Call call{app, window, context};
  switch (event.kind) {
    case Mouse::kPress:
      return Press(call, event);
    case Mouse::kDouble:
      return Double(call, event);
    case Mouse::kRelease:
      return Release(call, event.at);
    case Mouse::kMove:
      return Move(call, event.at);
    case Mouse::kRest:
      return Rest(call, event.at, context.isTipShown);
    case Mouse::kLeave:
      return Leave(call);
    case Mouse::kLost:
      return EndDrags(call);
    case Mouse::kWheel:
      return Turn(call, event);
    case Mouse::kTilt:
      ScrollSideways(app, window, PlaceList(app), event.delta, context.nowMs);
      return {.tip = u""};
  }
  return {};
}

Effects RefreshHover(AppState& app, WindowPort& window, const ViewContext& context,
                     std::optional<Point> mouse) {
  app.list.hoverRow = -1;
  app.list.hoverColumn = -1;
  Effects effects;
  if (mouse && !IsDragging(app.list)) effects = Hover({app, window, context}, PlaceList(app), *mouse);
  effects.tip = u"";
  return effects;
}

bool HasSizeCursor(const AppState& app, Point point) {
  if (app.list.dragColumn >= 0) return true;
  const ListLayout layout = PlaceList(app);
  return BarAt(app, layout, point) == Bar::kNone && ColumnEdgeAt(layout, app.scrollX, point) >= 0;
}

}  // namespace quilmark
