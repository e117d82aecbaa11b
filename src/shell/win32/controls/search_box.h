// The search box: an edit control with a centred line and a frame of its own.
#pragma once

#include <windows.h>

#include <cstddef>

namespace quilmark {

inline constexpr size_t kLongestQuery = 255;  // units that the box takes

HWND MakeSearchBox(HWND parent, HFONT font);

// Puts the line of text into the middle of the control; after each change of its size or font.
void ApplySearchBoxRect(HWND searchBox);

// The same for any multi-line edit; insets in pixels at 96 dpi.
void CentreEditLine(HWND edit, int leftInset, int rightInset);

}  // namespace quilmark
