// The three ways in which the system deletes a file, and the verbs of its shell. Interface thread.
#pragma once

#include <windows.h>

#include <string>

#include "shell/actions/shell_port.h"

namespace quilmark {

// By IFileOperation. True if it is done and nothing was broken off. Hands out messages meanwhile.
[[nodiscard]] bool DeleteByFileOperation(const std::u16string& path, Undo undo);

// By SHFileOperationW, likewise. REQUIRES fewer than MAX_PATH units.
[[nodiscard]] bool DeleteByShellCall(HWND owner, const std::u16string& path, Undo undo);

// By DeleteEntry over the calls of the system, which take paths of any length.
[[nodiscard]] bool DeleteByFileCalls(const std::u16string& path);

// By ShellExecuteExW; what fails says nothing. Hands out messages meanwhile.
void ExecuteVerb(HWND owner, ShellVerb verb, const std::u16string& path);

// Starts the file manager by its full path: an elevated program must not take one from its current
// folder. False where the shell says that it could not.
bool StartExplorer(HWND owner, const std::u16string& arguments);

}  // namespace quilmark
