// Gives memory back to the system.
#pragma once

#include <windows.h>

namespace quilmark {

// Empties the process's own working set, if MayTrim allows. Any thread.
void RequestSelfTrim(HWND mainWindow);

// Empties the working sets of all other processes, on the job "global_trim_all", unless one runs
// already. Any thread.
void RequestGlobalTrimAsync();

}  // namespace quilmark
