// The desktop program.
#pragma once

#include <windows.h>

namespace quilmark {

// Runs the program with what its entry point was given, and returns its exit code.
int RunQuilmark(HINSTANCE instance, wchar_t* commandLine, int showCommand);

}  // namespace quilmark
