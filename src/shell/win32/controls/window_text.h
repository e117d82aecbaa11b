// Texts of windows of the system.
#pragma once

#include <windows.h>

#include <string>

namespace quilmark {

// The whole text of a window, however long; empty for one that is gone.
std::u16string TextOfWindow(HWND window);

// At most `limit` units of that text.
std::u16string TextOfWindow(HWND window, size_t limit);

}  // namespace quilmark
