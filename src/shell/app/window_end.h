// The end of the main window, in its order. Interface thread.
#pragma once

#include "shell/app/app_state.h"
#include "shell/view/window_port.h"

namespace quilmark {

// What of the end only the window itself can do.
struct WindowEndPort {
  virtual ~WindowEndPort() = default;
  virtual void CloseOtherWindows() = 0;  // the settings
  virtual void RemoveTrayIcon() = 0;
  virtual void UnregisterHotkeys() = 0;
  virtual void ReleaseBrushes() = 0;
  virtual void ReleaseIcons() = 0;
  virtual void ReleaseBackBuffer() = 0;
  virtual void ReleaseFonts() = 0;
  virtual void QuitMessageLoop() = 0;
};

// Saves, stops timers and monitors, releases what the window held, waits half a second for detached jobs
// and ends the message loop.
void EndWindow(AppState& app, WindowPort& window, WindowEndPort& end);

// The program ends, or is about to: long work stops. Any thread.
bool IsEnding();

}  // namespace quilmark
