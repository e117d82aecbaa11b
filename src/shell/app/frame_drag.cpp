#include "shell/app/frame_drag.h"

#include <utility>

namespace quilmark {

void OnFrameHeld(AppState& app) { app.frameHeld = true; }

void OnFrameReleased(AppState& app, WindowPort& window) {
  if (std::exchange(app.frameHeld, false)) SaveWindowSettings(window.Placement());
}

void SaveWindowSize(const AppState& app, WindowPort& window) {
  SaveWindowSettings(window.Placement(), app.frameHeld ? Flushing::kLeftToSystem : Flushing::kWaited);
}

}  // namespace quilmark
