// The menu of the icon in the notification area.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

#include "shell/view/menu.h"

namespace quilmark {

// Shows the rows at the cursor until the user has chosen: the number of the choice, or 0 for nothing.
[[nodiscard]] uint16_t ChooseFromTrayMenu(HWND window, std::span<const MenuRow> rows);

}  // namespace quilmark
