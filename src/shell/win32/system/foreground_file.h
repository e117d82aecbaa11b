// The file of the program that the user is working in.
#pragma once

#include <windows.h>

namespace quilmark {

// Shows that file in the file manager. Where it cannot be had, shows a message box and returns when it
// is closed.
void ShowForegroundFile(HWND owner);

}  // namespace quilmark
