// Does to the window what a view asks for.
#pragma once

#include <optional>

#include "shell/view/effects.h"
#include "shell/win32/window/main_window.h"

namespace quilmark {

// In the order of the fields. Each may bring other messages, and with them other effects, before it
// returns.
void CarryOut(AppState& app, MainWindow& window, const Effects& effects);

// The hidden controls that keep range, page and position of the list for whoever asks the system.
void SyncBars(const AppState& app, const MainWindow& window);

// Where the mouse stands in the client area; empty where another window is under it.
std::optional<Point> MouseOver(HWND window);

}  // namespace quilmark
