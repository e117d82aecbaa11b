#include "shell/win32/list_mouse.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "config/window_settings.h"
#include "platform/clock.h"
#include "search/filtered_results.h"
#include "shell/filter_request.h"
#include "shell/list_input.h"
#include "shell/list_scroll.h"
#include "shell/result_messages.h"
#include "shell/row_text.h"
#include "shell/tip_text.h"
#include "shell/win32/rename_editor.h"
#include "shell/window_ids.h"
#include "shell/window_timers.h"

namespace quilmark {

namespace {

constexpr uint32_t kTrackSettleMs = 220, kReleaseSettleMs = 350, kDragRepaintMs = 16;

Bar BarAt(const AppState& app, const ListLayout& layout, Point point) {
  const auto vertical = VerticalBar(layout, app.scrollY, DisplayCount);
  if (vertical && Holds(vertical->track, point)) return Bar::kVertical;
  const auto horizontal = HorizontalBar(layout, app.scrollX);
  return horizontal && Holds(horizontal->track, point) ? Bar::kHorizontal : Bar::kNone;
}

bool IsOnThumb(const AppState& app, const ListLayout& layout, Bar kind, Point point) {
  const auto bar = kind == Bar::kVertical ? VerticalBar(layout, app.scrollY, DisplayCount)
                                          : HorizontalBar(layout, app.scrollX);
  return bar && Holds(bar->thumb, point);
}

void PressBar(AppState& app, MainWindow& window, const ListLayout& layout, Bar kind, Point point) {
  app.lastScrollTick = TickMs();
  window.StartTimer(kTimerScrollSettle, kTrackSettleMs);
  const bool isDrag = IsOnThumb(app, layout, kind, point);
  app.list.dragBar = kind;
  if (isDrag) {
    app.thumbDragging = kind == Bar::kVertical;
    SetCapture(window.Handle());
    return;
  }
  MoveThumb(app, window, layout, point, TickMs());
  app.list.dragBar = Bar::kNone;
}

void PressHeader(AppState& app, MainWindow& window, const ListLayout& layout, Point point) {
  const int edge = ColumnEdgeAt(layout, app.scrollX, point);
  if (edge >= 0) {
    app.list.dragColumn = edge;
    app.list.dragColumnX = point.x - layout.rows.left + app.scrollX;
    app.list.dragColumnWidth = CurrentWindowSettings.columnWidth[static_cast<size_t>(edge)];
    SetCapture(window.Handle());
    return;
  }
  const int column = ColumnAt(layout, app.scrollX, point.x);
  if (column > 0 && app.features.sort) app.features.sort(column);
}

void PressRows(AppState& app, MainWindow& window, const ListLayout& layout, Point point, WPARAM keys) {
  const bool isName = layout.view != ViewMode::kList || ColumnAt(layout, app.scrollX, point.x) == 1;
  const RowPress press = {.row = RowAt(layout, app.scrollY, DisplayCount, point),
                          .isNameColumn = isName,
                          .shift = (keys & MK_SHIFT) != 0,
                          .ctrl = (keys & MK_CONTROL) != 0,
                          .nowMs = TickMs()};
  const PressOutcome outcome = PressRow(app.list, press);
  if (outcome == PressOutcome::kRename) return OpenRenameEditor(app, window);
  if (outcome != PressOutcome::kSelected) return;
  if (press.row >= 0) SetFocus(window.Handle());
  window.InvalidateList();
}

void DragColumn(AppState& app, MainWindow& window, const ListLayout& layout, Point point) {
  int& width = CurrentWindowSettings.columnWidth[static_cast<size_t>(app.list.dragColumn)];
  const int wanted = DraggedWidth(app.list.dragColumnWidth, app.list.dragColumnX,
                                  point.x - layout.rows.left + app.scrollX);
  if (wanted == width) return;
  width = wanted;
  window.MoveRename();
  RequestListRepaint(app, window, kDragRepaintMs, TickMs());
}

void DragSidebar(AppState& app, MainWindow& window, Point point) {
  app.sidebarScroll = SidebarDragTo(window.Sidebar(), point.y);
  SyncScrollState(app, window);
  window.RedrawTags();
}

// The category of the sidebar under a point, or -1.
int SidebarTagAt(const MainWindow& window, Point point) {
  if (!CurrentWindowSettings.sidebarLayout) return -1;
  const SidebarLayout sidebar = window.Sidebar();
  for (size_t i = 0; i < sidebar.rows.size(); ++i) {
    if (Holds(sidebar.rows[i], point)) return sidebar.first + static_cast<int>(i);
  }
  return -1;
}

bool IsDragging(const ListState& list) {
  return list.dragsSidebar || list.dragColumn >= 0 || list.dragBar != Bar::kNone;
}

// What shows that the mouse is over a row, or over a bar.
Rect HoverPlace(const AppState& app, const ListLayout& layout) {
  if (app.list.hoverRow >= 0) {
    const Rect row = PlaceOfRow(layout, app.scrollY, static_cast<uint64_t>(app.list.hoverRow));
    return Intersection(row, layout.rows);
  }
  const auto bar = app.list.hoverBar == Bar::kVertical ? VerticalBar(layout, app.scrollY, DisplayCount)
                   : app.list.hoverBar == Bar::kHorizontal ? HorizontalBar(layout, app.scrollX)
                                                           : std::nullopt;
  return bar ? bar->track : Rect();
}

void TakeHover(AppState& app, MainWindow& window, const ListLayout& layout, Point point) {
  if (CurrentWindowSettings.sidebarLayout) {
    const int tag = SidebarTagAt(window, point);
    if (tag != std::exchange(app.list.hoverTag, tag)) window.RedrawTags();
  }
  const Bar bar = BarAt(app, layout, point);
  const int64_t row = bar == Bar::kNone ? RowAt(layout, app.scrollY, DisplayCount, point) : -1;
  const int column = row >= 0 ? ColumnAt(layout, app.scrollX, point.x) : -1;
  const bool isElsewhere = bar != app.list.hoverBar || row != app.list.hoverRow;
  if (isElsewhere || column != app.list.hoverColumn) window.tip.Hide();
  const Rect former = HoverPlace(app, layout);
  app.list.hoverBar = bar;
  app.list.hoverRow = row;
  app.list.hoverColumn = column;
  if (!isElsewhere) return;
  RequestRepaintOf(app, window, Union(former, HoverPlace(app, layout)), kDragRepaintMs, TickMs());
}

void Hover(AppState& app, MainWindow& window, const ListLayout& layout, Point point) {
  TakeHover(app, window, layout, point);
  TRACKMOUSEEVENT track = {};
  track.cbSize = sizeof track;
  track.dwFlags = TME_LEAVE | TME_HOVER;
  track.hwndTrack = window.Handle();
  track.dwHoverTime = HOVER_DEFAULT;
  TrackMouseEvent(&track);
}

void SetScrollState(HWND bar, int64_t limit, int page, int64_t position) {
  const int64_t divisor = PixelsOfBarStep(limit, page);
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  // The last position that can be reached is nMax - nPage + 1.
  info.nMax = static_cast<int>((limit + page) / divisor) - 1;
  info.nPage = static_cast<UINT>(page / divisor);
  info.nPos = static_cast<int>(position / divisor);
  SetScrollInfo(bar, SB_CTL, &info, FALSE);
}

}  // namespace

void OnListPress(AppState& app, MainWindow& window, Point point, WPARAM keys) {
  const ListLayout layout = window.List();
  if (CurrentWindowSettings.sidebarLayout && Holds(window.Sidebar().track, point)) {
    app.list.dragsSidebar = true;
    SetCapture(window.Handle());
    return DragSidebar(app, window, point);
  }
  const int tag = SidebarTagAt(window, point);
  if (tag >= 0) return SelectFilterTag(app, window, tag);
  const Bar bar = BarAt(app, layout, point);
  if (bar != Bar::kNone) return PressBar(app, window, layout, bar, point);
  if (Holds(layout.header, point)) return PressHeader(app, window, layout, point);
  if (point.y >= layout.rows.top && point.x >= layout.rows.left) {
    PressRows(app, window, layout, point, keys);
  }
}

void OnListRelease(AppState& app, MainWindow& window) {
  // Where another window has taken the capture it stays there.
  if (GetCapture() == window.Handle()) ReleaseCapture();
  if (std::exchange(app.list.dragsSidebar, false)) window.RedrawTags();
  if (app.list.dragColumn >= 0) {
    app.list.dragColumn = -1;
    window.RelayoutList();
    SaveWindowSettings(window.Placement());
    window.InvalidateList();
  }
  if (app.list.dragBar != Bar::kNone) {
    app.list.dragBar = Bar::kNone;
    app.thumbDragging = false;
    app.lastScrollTick = TickMs();
    window.RelayoutList();
    window.StartTimer(kTimerScrollSettle, kReleaseSettleMs);
    RequestListRepaint(app, window, kDragRepaintMs, TickMs());
  }
}

void OnListMove(AppState& app, MainWindow& window, Point point) {
  if (app.list.dragsSidebar) return DragSidebar(app, window, point);
  const ListLayout layout = window.List();
  if (app.list.dragBar != Bar::kNone) return MoveThumb(app, window, layout, point, TickMs());
  if (app.list.dragColumn >= 0) return DragColumn(app, window, layout, point);
  Hover(app, window, layout, point);
}

void OnListRest(AppState& app, MainWindow& window, Point point) {
  if (IsDragging(app.list) || window.tip.IsShown()) return;
  TakeHover(app, window, window.List(), point);
  const auto view = static_cast<ViewMode>(CurrentWindowSettings.viewMode);
  const Tip tip = TipOfCell(view, app.list.hoverRow, app.list.hoverColumn);
  window.tip.Show(window.Handle(), tip.text, app.systemDpi, CurrentFonts().Of(FontRole::kMain));
  if (tip.isMissing && !IsScrolling(app, TickMs())) RunFeature(app.features.requestAttributes);
}

void RefreshHover(AppState& app, MainWindow& window) {
  window.tip.Hide();
  POINT cursor = {};
  const bool isHere = GetCursorPos(&cursor) && WindowFromPoint(cursor) == window.Handle();
  ScreenToClient(window.Handle(), &cursor);
  app.list.hoverRow = -1;
  app.list.hoverColumn = -1;
  if (isHere && !IsDragging(app.list)) Hover(app, window, window.List(), {cursor.x, cursor.y});
}

void OnListLeave(AppState& app, MainWindow& window) {
  const bool isHovered = app.list.hoverRow >= 0 || app.list.hoverBar != Bar::kNone;
  const bool isTagHovered = app.list.hoverTag >= 0;
  app.list.hoverRow = -1;
  app.list.hoverColumn = -1;
  app.list.hoverTag = -1;
  app.list.hoverBar = Bar::kNone;
  window.tip.Hide();
  if (isHovered) window.InvalidateList();
  if (isTagHovered) window.RedrawTags();
}

bool ScrollSidebar(AppState& app, MainWindow& window, Point point, int delta) {
  const bool isOver =
      CurrentWindowSettings.sidebarLayout && point.x < app.sidebarWidth && point.y >= app.headerTop;
  if (!isOver) return false;
  const SidebarLayout sidebar = window.Sidebar();
  const int rows = TakeTurn(app.list.sidebarRest, delta);
  app.sidebarScroll = std::clamp(sidebar.first - rows, 0, sidebar.scrollLimit);
  SyncScrollState(app, window);
  Hover(app, window, window.List(), point);
  window.RedrawTags();
  return true;
}

bool SetListCursor(const AppState& app, const MainWindow& window, Point point) {
  const ListLayout layout = window.List();
  const bool isOverEdge =
      BarAt(app, layout, point) == Bar::kNone && ColumnEdgeAt(layout, app.scrollX, point) >= 0;
  if (app.list.dragColumn < 0 && !isOverEdge) return false;
  SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
  return true;
}

void SyncScrollState(const AppState& app, const MainWindow& window) {
  const ListLayout layout = window.List();
  SetScrollState(window.verticalBar, ScrollLimit(layout, DisplayCount), Height(layout.rows),
                 app.scrollY);
  SetScrollState(window.horizontalBar, ClampHorizontal(layout, std::numeric_limits<int>::max()),
                 Width(layout.rows), app.scrollX);
  const SidebarLayout sidebar = window.Sidebar();
  SetScrollState(window.sidebarBar, sidebar.scrollLimit, sidebar.fitting, sidebar.first);
}

void FitColumns(AppState& app, const MainWindow& window) {
  const ListLayout layout = window.List();
  if (layout.view != ViewMode::kList) return;
  const auto rows = ShownResults();
  const RowsInView inView = RowsToPaint(layout, app.scrollY, rows->size());
  int widest = 0;
  for (uint64_t row = inView.first; row < inView.end; ++row) {
    const std::u16string folder = TextOfRow((*rows)[row]).folder;
    widest = std::max(widest, CurrentFonts().WidthOf(FontRole::kList, folder));
  }
  app.pathColumnWidth = FitPathColumn(layout, widest, CurrentWindowSettings.columnWidth[kPathColumn]);
}

}  // namespace quilmark
