// The menu that the system has for files. Interface thread.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace quilmark {

// Opens the menu for files of one folder at that point of the screen, and has the choice done. Files
// that the shell does not know any more are left out. Hands out messages meanwhile.
void OpenSystemMenu(HWND owner, POINT at, const std::vector<std::u16string>& paths);

// Hands a message of the owner's window to the handlers of the open menu, which measure and draw entries
// and fill sub-menus: WM_INITMENUPOPUP, WM_MENUCHAR, and the WM_DRAWITEM and WM_MEASUREITEM of a menu.
// Empty for any other, without such a menu, and where they do not answer.
[[nodiscard]] std::optional<LRESULT> OfferToSystemMenu(UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace quilmark
