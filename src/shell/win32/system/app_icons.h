// The program's icon in the sizes that its places need.
#pragma once

#include <windows.h>

#include <cstdint>

#include "shell/win32/gdi/gdi.h"

namespace quilmark {

// Pixels of both sides. Empty where it cannot be loaded.
UniqueIcon LoadAppIcon(int size);

// What the window has in its title bar and on the taskbar.
struct WindowIcons {
  UniqueIcon large, small;
};

// Gives the window icons for its scale; `icons` holds them until it has others.
void WearIcons(HWND window, uint32_t dpi, WindowIcons& icons);

// Pixels of an icon in the notification area, which has the scale of the taskbar's screen.
int TrayIconSize();

}  // namespace quilmark
