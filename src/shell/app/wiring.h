// The map of the program: what is joined with what, once, at the start.
#pragma once

#include "shell/actions/shell_port.h"
#include "shell/app/app_state.h"
#include "shell/list/icon_source.h"

namespace quilmark {

// What the system gives the program, beside its window.
struct SystemParts {
  ShellPort& shell;   // outlives the last event of the window
  IconSource& icons;  // outlives the engine's work
};

// Joins the search with the window, its rows with icons, and the engine's start with the attribute
// cache. Once, before StartEngine. `window` outlives the engine's work. The icons of folders are asked
// for at once.
void WireProgram(AppState& app, WindowPort& window, const SystemParts& system);

// Has the engine index all drives and follow those that come and go. Its messages begin with this call.
void StartEngine(AppState& app);

}  // namespace quilmark
