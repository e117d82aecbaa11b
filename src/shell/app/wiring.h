// The map of the program: what is joined with what, once, at the start.
#pragma once

#include "shell/app/app_state.h"
#include "shell/list/icon_source.h"

namespace quilmark {

// Joins the search with the window and the system's shell, its rows with icons, and the engine's start
// with the attribute cache. Once, before StartEngine. `window` and `icons` outlive the engine's work, and
// `shell` the last event of the window; `icons` is asked for those of folders at once.
void WireProgram(AppState& app, WindowPort& window, ShellPort& shell, IconSource& icons);

// Has the engine index all drives and follow those that come and go. Its messages begin with this call.
void StartEngine(AppState& app);

}  // namespace quilmark
