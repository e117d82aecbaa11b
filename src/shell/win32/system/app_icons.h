// The program's icon in the sizes that its places need.
#pragma once

#include <windows.h>

#include <cstdint>

#include "shell/win32/gdi/gdi.h"

namespace quilmark {

// The icon with sides of `size` pixels. Empty where it cannot be loaded.
UniqueIcon LoadAppIcon(int size);

// The icons of the window: on the taskbar and in its title bar.
struct WindowIcons {
  UniqueIcon large, small;
};

// Gives the window icons for that dpi. `icons` owns them until it gets others; one that cannot be loaded
// leaves the former.
void WearIcons(HWND window, uint32_t dpi, WindowIcons& icons);

// Pixels of a side of an icon in the notification area, which has the scale of the taskbar's screen.
int TrayIconSize();

}  // namespace quilmark
