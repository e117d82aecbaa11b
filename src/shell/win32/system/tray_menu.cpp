#include "shell/win32/system/tray_menu.h"

#include "config/translate.h"
#include "platform/win32/unique.h"
#include "platform/win32/wide.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

struct MenuTraits {
  using Value = HMENU;
  static Value Empty() { return nullptr; }
  static void Close(Value menu) { DestroyMenu(menu); }
};

void Append(HMENU menu, int id, std::u16string_view key, std::u16string_view english) {
  AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id), Wide(TranslateOr(key, english)));
}

}  // namespace

int ChooseFromTrayMenu(HWND window) {
  const Unique<MenuTraits> owner(CreatePopupMenu());
  const HMENU menu = owner.Get();
  Append(menu, kTrayShow, u"Menu_ShowMainWindow", u"Show Window");
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  Append(menu, kTrayExit, u"Menu_Exit", u"Exit");
  POINT cursor = {};
  GetCursorPos(&cursor);
  // Without the foreground the menu would stay open after a click elsewhere.
  SetForegroundWindow(window);
  return TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, cursor.x, cursor.y, 0, window, nullptr);
}

}  // namespace quilmark
