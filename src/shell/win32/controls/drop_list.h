// The list that a combo box drops down, in the colours of the palette.
#pragma once

#include <windows.h>

namespace quilmark {

void StyleDropDown(HWND combo);    // when it opens
void UnstyleDropDown(HWND combo);  // when it closes

// Scrollbars and frame of a popup of the system, dark or light as the theme is.
void ThemePopup(HWND popup);

}  // namespace quilmark
