// The list that a combo box drops down, in the colours of the palette.
#pragma once

#include <windows.h>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

void StyleDropDown(HWND combo, ControlHost& host);  // when it opens
void UnstyleDropDown(HWND combo);                   // when it closes

// Scrollbars and frame of a popup of the system, dark or light as the theme is.
void ThemePopup(HWND popup, bool isDark);

}  // namespace quilmark
