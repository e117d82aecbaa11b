// Saving the window's size while its frame is dragged: each size on the way goes into the settings file,
// but the disk is waited for once, when the frame is let go. Interface thread.
#pragma once

#include "shell/app/app_state.h"

namespace quilmark {

// The user has taken hold of the frame or the title bar: sizes are saved without waiting for the disk.
void OnFrameHeld(AppState& app);

// The user has let go of it: waits for the disk once.
void OnFrameReleased(AppState& app, WindowPort& window);

// Saves the size that the window has now.
void SaveWindowSize(const AppState& app, WindowPort& window);

}  // namespace quilmark
