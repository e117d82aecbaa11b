// Menus of the system from data.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

#include "shell/view/menu.h"

namespace quilmark {

// Shows the rows as a menu at a point of the screen until the user has chosen, and returns the number of
// the choice; 0 for none, and where the system makes no menu. Runs a message loop: any message comes in
// meanwhile. `owner` has to be in the foreground, or a click elsewhere does not close the menu.
[[nodiscard]] uint16_t TrackMenu(HWND owner, POINT screenPoint, std::span<const MenuRow> rows);

}  // namespace quilmark
