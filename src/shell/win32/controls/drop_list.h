// The list that a combo box drops down, in the colours of the palette.
#pragma once

#include <windows.h>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

// Paints the list of a combo in the palette from now on: when it opens.
void StyleDropDown(HWND combo, ControlHost& host);

// Gives the list back to the system: when it closes.
void UnstyleDropDown(HWND combo);

// Makes scrollbars and frame of a popup of the system dark or light.
void ThemePopup(HWND popup, bool isDark);

}  // namespace quilmark
