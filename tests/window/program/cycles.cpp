#include "window/program/cycles.h"

#include <windows.h>

#include <commctrl.h>

#include "config/window_settings.h"
#include "shell/app/frame_drag.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/rename_editor.h"
#include "shell/win32/system/theme.h"
#include "shell/win32/window/window_paint.h"

namespace quilmark {

namespace {

void DispatchAll() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void Paint(const MainWindow& window) {
  PaintWindow(window.backBuffer.Dc(), window, window.Context().client);
}

void CycleViews(MainWindow& window) {
  for (const ViewMode view : {ViewMode::kSmallIcons, ViewMode::kLargeIcons, ViewMode::kList}) {
    CurrentWindowSettings.viewMode = static_cast<int>(view);
    window.RelayoutList();
    Paint(window);
  }
}

void CycleThemes(MainWindow& window) {
  CurrentWindowSettings.darkTheme = !CurrentWindowSettings.darkTheme;
  ApplyTheme(window);
}

void CycleEditor(AppState& app, MainWindow& window) {
  SelectOnly(app.list.selection, 2);
  OpenRenameEditor(app, window);
  CancelRenameEditor(window);
}

void CycleDropList(const MainWindow& window) {
  const HWND box = GetDlgItem(window.Handle(), kTimePreset);
  SendMessageW(box, CB_SHOWDROPDOWN, TRUE, 0);
  DispatchAll();  // its paint
  SendMessageW(box, CB_SHOWDROPDOWN, FALSE, 0);
}

void CycleCalendar(const MainWindow& window) {
  const HWND picker = GetDlgItem(window.Handle(), kDateFrom);
  RECT client = {};
  GetClientRect(picker, &client);
  const LPARAM button = MAKELPARAM(client.right - 8, client.bottom / 2);
  for (int press = 0; press < 2; ++press) {
    SendMessageW(picker, WM_LBUTTONDOWN, MK_LBUTTON, button);
    SendMessageW(picker, WM_LBUTTONUP, 0, button);
    DispatchAll();
  }
}

void CycleTip(MainWindow& window) {
  window.tip.Show(u"C:\\a path that is told", window.Context(), CurrentFonts().Of(FontRole::kMain));
  window.tip.Hide();
}

void CycleScales(const AppState& app, const MainWindow& window) {
  const WORD dpi = app.systemDpi == 96 ? 144 : 96;
  SendMessageW(window.Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), 0);
}

void CycleOnce(AppState& app, MainWindow& window, Screen screen) {
  switch (screen) {
    case Screen::kViews:
      return CycleViews(window);
    case Screen::kSidebar:
      SetFilterLayout(app, window, true);
      Paint(window);
      return SetFilterLayout(app, window, false);
    case Screen::kThemes:
      return CycleThemes(window);
    case Screen::kEditor:
      return CycleEditor(app, window);
    case Screen::kDropList:
      return CycleDropList(window);
    case Screen::kCalendar:
      return CycleCalendar(window);
    case Screen::kTip:
      return CycleTip(window);
    case Screen::kHidden:
      ShowWindow(window.Handle(), SW_HIDE);
      ShowWindow(window.Handle(), SW_SHOWNA);
      return;
    case Screen::kScales:
      return CycleScales(app, window);
    case Screen::kCount:
      return;
  }
}

}  // namespace

void Cycle(AppState& app, MainWindow& window, Screen screen, uint32_t times) {
  OnFrameHeld(app);  // settings are saved without waiting for the disk
  for (uint32_t i = 0; i < times; ++i) CycleOnce(app, window, screen);
  OnFrameReleased(app, window);
}

}  // namespace quilmark
