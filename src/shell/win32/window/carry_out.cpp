#include "shell/win32/window/carry_out.h"

#include <limits>

#include "config/window_settings.h"
#include "search/filtered_results.h"
#include "shell/search/list_scroll.h"
#include "shell/win32/controls/rename_editor.h"

namespace quilmark {

namespace {

void SetBar(HWND bar, const BarRange& range) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  info.nMax = range.last;
  info.nPage = static_cast<UINT>(range.page);
  info.nPos = range.position;
  SetScrollInfo(bar, SB_CTL, &info, FALSE);
}

void TrackMouse(HWND window) {
  TRACKMOUSEEVENT track = {};
  track.cbSize = sizeof track;
  track.dwFlags = TME_LEAVE | TME_HOVER;
  track.hwndTrack = window;
  track.dwHoverTime = HOVER_DEFAULT;
  TrackMouseEvent(&track);
}

void TakeCapture(const MainWindow& window, Capture capture) {
  if (capture == Capture::kTake) SetCapture(window.Handle());
  // Where another window has taken the capture it stays there.
  if (capture == Capture::kRelease && GetCapture() == window.Handle()) ReleaseCapture();
}

}  // namespace

void SyncBars(const AppState& app, const MainWindow& window) {
  const ListLayout layout = PlaceList(app);
  const SidebarLayout sidebar = PlaceSidebar(app);
  const int sideways = ClampHorizontal(layout, std::numeric_limits<int>::max());
  SetBar(window.verticalBar,
         RangeOfBar(ScrollLimit(layout, DisplayCount), Height(layout.rows), app.scrollY));
  SetBar(window.horizontalBar, RangeOfBar(sideways, Width(layout.rows), app.scrollX));
  SetBar(window.sidebarBar, RangeOfBar(sidebar.scrollLimit, sidebar.fitting, sidebar.first));
}

std::optional<Point> MouseOver(HWND window) {
  POINT cursor = {};
  if (!GetCursorPos(&cursor) || WindowFromPoint(cursor) != window) return std::nullopt;
  ScreenToClient(window, &cursor);
  return Point{cursor.x, cursor.y};
}

void CarryOut(AppState& app, MainWindow& window, const Effects& effects) {
  if (effects.editor == Editor::kOpen) OpenRenameEditor(app, window);
  TakeCapture(window, effects.capture);
  if (effects.focus == Focus::kWindow) SetFocus(window.Handle());
  if (effects.syncsBars) SyncBars(app, window);
  if (effects.tracksMouse) TrackMouse(window.Handle());
  if (effects.savesSettings) SaveWindowSettings(window.Placement());
  if (effects.tip) {
    window.tip.Show(*effects.tip, window.Context(), CurrentFonts().Of(FontRole::kMain));
  }
}

}  // namespace quilmark
