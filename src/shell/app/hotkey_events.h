// The hotkeys of the program, and the keys of a capture. Interface thread. All of it needs
// AppState::system.
#pragma once

#include "shell/app/app_state.h"

namespace quilmark {

// Asks the system for both hotkeys of the settings. One that somebody has is done without.
void RegisterHotkeysAtStart(AppState& app);

// Shows the main window and waits for a new combination there.
void CaptureHotkey(AppState& app, WindowPort& window, HotkeyKind which);

// Answers a key in front of all else. True if it was taken.
[[nodiscard]] bool OnCaptureKey(AppState& app, WindowPort& window, const CaptureKey& key);

// Answers kTimerCaptureHint.
void OnCaptureHint(AppState& app, WindowPort& window);

}  // namespace quilmark
