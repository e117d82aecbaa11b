// The menu of the icon in the notification area.
#pragma once

#include <windows.h>

namespace quilmark {

// Shows it at the cursor until the user has chosen: kTrayShow, kTrayExit, or 0 for nothing.
int ChooseFromTrayMenu(HWND window);

}  // namespace quilmark
