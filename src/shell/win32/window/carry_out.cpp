// Carries out what a view asks of the window.
#include <utility>

#include "shell/app/routing.h"
#include "shell/view/window_ids.h"
#include "shell/win32/system/popup_menu.h"
#include "shell/win32/window/main_window.h"

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

void TakeCapture(HWND window, Capture capture) {
  if (capture == Capture::kTake) SetCapture(window);
  // If another window has taken the capture, it keeps it.
  if (capture == Capture::kRelease && GetCapture() == window) ReleaseCapture();
}

// Where the mouse stands in the client area; empty where another window is under it.
std::optional<Point> MouseOver(HWND window) {
  POINT cursor = {};
  if (!GetCursorPos(&cursor) || WindowFromPoint(cursor) != window) return std::nullopt;
  ScreenToClient(window, &cursor);
  return Point{cursor.x, cursor.y};
}

bool HasSize() { return App().clientWidth != 0 && App().clientHeight != 0; }

}  // namespace

// In the order of the fields, but for what is to be painted: that calls nobody back, and stands when the
// user is asked something. Each of the others may bring other messages, and with them other effects,
// before it returns.
void MainWindow::CarryOut(const Effects& effects) {
  Invalidate(effects.dirty);
  if (effects.relayout) {
    Relayout();
  } else if (effects.placesControls) {
    PlaceControls();
  }
  CarryOutEditor(effects);
  TakeCapture(window_, effects.capture);
  TakeFocus(effects.focus);
  if (effects.syncsBars) SyncBars();
  if (effects.rehovers) CarryOut(ShownView(App()).Rehover(MouseOver(window_), Context()));
  if (effects.tracksMouse) TrackMouse(window_);
  if (effects.tip) tip.Show(*effects.tip, Context(), CurrentFonts().Of(FontRole::kMain));
  if (effects.paintsNow) UpdateWindow(window_);
  if (effects.menu) OpenMenu(*effects.menu);
  if (effects.command != 0) RunCommand(effects.command);
}

// Both run message loops of their own: nothing of the event that asked for them is left to be done.
void MainWindow::OpenMenu(const Menu& menu) {
  POINT place = {menu.at.x, menu.at.y};
  ClientToScreen(window_, &place);
  if (const uint16_t chosen = TrackMenu(window_, place, menu.rows); chosen != 0) RunCommand(chosen);
}

void MainWindow::RunCommand(uint16_t id) { CarryOut(RouteCommand(App(), Context(), id)); }

void MainWindow::Relayout() {
  if (!HasSize()) return;
  PlaceControls();
  CarryOut(ShownView(App()).LaidOut(Context()));
}

void MainWindow::PlaceControls() {
  if (HasSize()) controls.Place(ShownView(App()).Layout(Context()));
}

void MainWindow::CarryOutEditor(const Effects& effects) {
  switch (effects.editor) {
    case Editor::kOpen:
      if (effects.editorPlace || editor.IsOpen()) {
        editor.Open(window_, effects.editorPlace.value_or(EditorPlace()), *this);
        // The system has made no editor.
        if (!editor.IsOpen()) OnControl({.kind = ControlEvent::kEscape, .id = NameEditor::kId});
      }
      break;
    case Editor::kMove:
      if (effects.editorPlace) editor.Move(effects.editorPlace->place);
      break;
    case Editor::kClose:
      editor.Close();
      break;
    case Editor::kKeep:
      break;
  }
}

void MainWindow::TakeFocus(Focus focus) {
  if (focus == Focus::kWindow) SetFocus(window_);
  // If the search box cannot have the focus, the window keeps it, as the system would do.
  if (focus == Focus::kSearchBox && !controls.Focus(kQueryBox) && GetFocus() == nullptr) {
    SetFocus(window_);
  }
  if (focus == Focus::kEditor && editor.IsOpen()) editor.TakeFocus();
}

// Updates the hidden controls that hold range, page and position of the list for other programs.
void MainWindow::SyncBars() {
  ++rangeUpdates;
  for (const BarRange& bar : ShownView(App()).Bars(Context())) SetBar(GetDlgItem(window_, bar.id), bar);
}

bool MainWindow::OnControl(const ControlEvent& event) {
  const Effects effects = RouteControl(App(), Context(), event);
  CarryOut(effects);
  return effects.isTaken;
}

void MainWindow::PaintControl(Canvas& canvas, const ControlPicture& control) const {
  ShownView(App()).PaintControl(canvas, control, Context());
}

}  // namespace quilmark
