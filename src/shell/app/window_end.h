// The end of the main window, in its order. Interface thread.
#pragma once

#include "shell/app/app_state.h"
#include "shell/view/window_port.h"

namespace quilmark {

// What of the end only the window itself can do. EndWindow calls each once.
struct WindowEndPort {
  virtual ~WindowEndPort() = default;

  // Closes the windows that belong to the main one.
  virtual void CloseOtherWindows() = 0;

  // Takes the icon out of the notification area.
  virtual void RemoveTrayIcon() = 0;

  // Gives the hotkeys back to the system.
  virtual void UnregisterHotkeys() = 0;

  // Frees the brushes; nothing is painted any more.
  virtual void ReleaseBrushes() = 0;

  // Frees the back buffer.
  virtual void ReleaseBackBuffer() = 0;

  // Frees the fonts.
  virtual void ReleaseFonts() = 0;

  // Has the message loop end.
  virtual void QuitMessageLoop() = 0;
};

// Saves, stops timers and monitors, releases what the window held, waits half a second for detached jobs
// and ends the message loop.
void EndWindow(AppState& app, WindowPort& window, WindowEndPort& end);

// True once the program ends: long work stops. Any thread.
bool IsEnding();

}  // namespace quilmark
