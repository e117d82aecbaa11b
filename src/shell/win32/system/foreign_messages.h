// Messages that other programs send to the main window. The program runs with more rights than they do,
// and the system lets through only what the window has asked for.
#pragma once

#include <windows.h>

namespace quilmark {

// Sent by a second copy of the program to have the window shown.
inline constexpr wchar_t kShowMessage[] = L"Quilmark_ShowMainWindow_2024";

// Numbers that the system has given to messages by name; 0 where it has none left.
struct ForeignMessages {
  UINT taskbarCreated = 0;
  UINT show = 0;
};

// Asks for the numbers, and lets these messages and those of the notification area through to `window`.
ForeignMessages OpenToOthers(HWND window);

}  // namespace quilmark
