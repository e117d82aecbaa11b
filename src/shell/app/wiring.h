// The map of the program: what is joined with what, once, at the start.
#pragma once

#include "shell/app/app_state.h"

namespace quilmark {

// Joins the search with the window, and the engine's start with the attribute cache. Once, before
// StartEngine. `window` outlives the engine's work, and `shell` the last event of the window.
void WireProgram(AppState& app, WindowPort& window, ShellPort& shell);

// Has the engine index all drives and follow those that come and go. Its messages begin with this call.
void StartEngine(AppState& app);

}  // namespace quilmark
