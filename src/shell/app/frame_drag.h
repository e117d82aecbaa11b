// Saving the window's size while its frame is dragged: each size on the way goes into the settings file,
// but the disk is waited for once, when the frame is let go. Interface thread.
#pragma once

#include "shell/app/app_state.h"

namespace quilmark {

// The user has taken hold of the frame or the title bar, and has let go of it.
void OnFrameHeld(AppState& app);
void OnFrameReleased(AppState& app, WindowPort& window);

// The window has another size.
void SaveWindowSize(const AppState& app, WindowPort& window);

}  // namespace quilmark
