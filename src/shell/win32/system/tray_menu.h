// The menu of the icon in the notification area.
#pragma once

#include "shell/win32/window/main_window.h"

namespace quilmark {

// Opens it at the cursor and does what was chosen.
void ShowTrayMenu(AppState& app, MainWindow& window);

}  // namespace quilmark
