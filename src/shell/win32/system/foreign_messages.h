// Messages that other programs send to the main window. The program runs with more rights than they do,
// and the system lets through only what the window has asked for.
#pragma once

#include <windows.h>

namespace quilmark {

// Sent by a second copy of the program to have the window shown.
inline constexpr wchar_t kShowMessage[] = L"Quilmark_ShowMainWindow_2024";

struct ForeignMessages {  // registered; 0 where the system has no number left
  UINT taskbarCreated = 0;
  UINT show = 0;
};

// Registers them, and lets them through to `window` as well as what the notification area reports.
ForeignMessages OpenToOthers(HWND window);

}  // namespace quilmark
