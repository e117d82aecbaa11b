// A menu of the system, made of what a menu offers as data.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

#include "shell/view/menu.h"

namespace quilmark {

// Shows the menu at a place of the screen until the user has chosen, and gives the command; 0 for none.
// Messages of `owner` come in meanwhile.
uint16_t TrackMenu(HWND owner, POINT place, std::span<const MenuRow> rows);

}  // namespace quilmark
