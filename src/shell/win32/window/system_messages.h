// What the system itself tells the main window: devices, and the end of the session.
#pragma once

#include "shell/win32/window/main_window.h"

namespace quilmark {

// WM_DEVICECHANGE, of drives and of volumes whose device is open.
std::optional<LRESULT> OnDeviceChange(AppState& app, MainWindow& window, const Message& message);

// WM_ENDSESSION. Saves what the end of the program would save.
std::optional<LRESULT> OnSessionEnd(AppState& app, MainWindow& window, const Message& message);

}  // namespace quilmark
