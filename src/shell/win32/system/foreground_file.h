// The file of the program that the user is working in.
#pragma once

#include <windows.h>

namespace quilmark {

// Shows it in the file manager; a message box where it cannot be had.
void ShowForegroundFile(HWND owner);

}  // namespace quilmark
