// Gives memory back to the system while nobody looks.
#pragma once

#include <windows.h>

namespace quilmark {

// Empties the process's own working set, if MayTrim allows. Any thread.
void RequestSelfTrim(HWND mainWindow);

// The same for all other processes, on the job "global_trim_all", unless one runs.
void RequestGlobalTrimAsync();

}  // namespace quilmark
