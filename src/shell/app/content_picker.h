// The window that chooses file types, as the program shows it. Interface thread.
#pragma once

#include "shell/app/app_state.h"

namespace quilmark {

// Shows the window, or brings up the one that is open. What is picked in it becomes the query's list and
// the setting. `window` outlives it.
void OpenContentExtPicker(AppState& app, WindowPort& window);

}  // namespace quilmark
