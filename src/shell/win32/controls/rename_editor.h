// The editor over a name in the list.
#pragma once

#include "shell/win32/window/main_window.h"

namespace quilmark {

// Over the row that has the focus; nothing in the icon views, and for a row that is not whole in view.
void OpenRenameEditor(AppState& app, MainWindow& window);

// Puts it where its row has scrolled to; nothing where it is not open.
void MoveRenameEditor(const AppState& app, MainWindow& window);

// Closes it without a rename.
void CancelRenameEditor(MainWindow& window);

}  // namespace quilmark
