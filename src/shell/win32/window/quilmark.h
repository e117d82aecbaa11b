// The desktop program.
#pragma once

#include <windows.h>

namespace quilmark {

// From the entry of the process to its exit code.
int RunQuilmark(HINSTANCE instance, wchar_t* commandLine, int showCommand);

}  // namespace quilmark
