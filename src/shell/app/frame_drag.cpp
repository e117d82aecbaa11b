#include "shell/app/frame_drag.h"

#include <utility>

namespace quilmark {

void OnFrameHeld(AppState& app) { app.frameHeld = true; }

void OnFrameReleased(AppState& app, WindowEndPort& window) {
  if (std::exchange(app.frameHeld, false)) SaveWindowSettings(window.Placement());
}

void SaveWindowSize(const AppState& app, WindowEndPort& window) {
  SaveWindowSettings(window.Placement(), app.frameHeld ? Flushing::kLeftToSystem : Flushing::kWaited);
}

}  // namespace quilmark
