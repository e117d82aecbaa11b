// The map of the program: what is joined with what, once, at the start.
#pragma once

#include "shell/app/app_state.h"

namespace quilmark {

// Joins the search with the window, and the engine's start with the cache of attributes. Before the
// first message of the engine.
void WireProgram(AppState& app, WindowPort& window);

// The engine looks for volumes and follows drives that come and go. Its messages begin.
void StartEngine(AppState& app);

}  // namespace quilmark
