// Texts of windows of the system.
#pragma once

#include <windows.h>

#include <string>

namespace quilmark {

// Whole, however long; empty for no window.
std::u16string TextOfWindow(HWND window);

// At most `limit` units of it.
std::u16string TextOfWindow(HWND window, size_t limit);

}  // namespace quilmark
