// Actions on one path, for rows of any view. They need no record of it. Interface thread.
#pragma once

#include <string>

#include "shell/actions/shell_port.h"

namespace quilmark {

// Shows the path selected in its folder; where the file manager does not start that way, opens the
// folder, and for a path without one the path itself.
void ShowInFileManager(ShellPort& shell, const std::u16string& path);

// Puts the path on the clipboard as a text. False where the clipboard does not take it; the result may
// be dropped, as nobody is told.
bool CopyPathToClipboard(ShellPort& shell, const std::u16string& path);

// Shows the system's window of properties.
void ShowProperties(ShellPort& shell, const std::u16string& path);

}  // namespace quilmark
