#include "shell/win32/system/tray_menu.h"

#include "shell/win32/system/popup_menu.h"

namespace quilmark {

uint16_t ChooseFromTrayMenu(HWND window, std::span<const MenuRow> rows) {
  POINT cursor = {};
  GetCursorPos(&cursor);
  // Without the foreground the menu would stay open after a click elsewhere.
  SetForegroundWindow(window);
  const uint16_t choice = TrackMenu(window, cursor, rows);
  PostMessageW(window, WM_NULL, 0, 0);  // or the next menu would close at once
  return choice;
}

}  // namespace quilmark
