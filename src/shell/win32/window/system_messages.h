// What the system itself tells the main window: devices, and the end of the session.
#pragma once

#include "shell/win32/window/main_window.h"

namespace quilmark {

std::optional<LRESULT> OnDeviceChange(AppState& app, MainWindow& window, const Message& message);
std::optional<LRESULT> OnSessionEnd(AppState& app, MainWindow& window, const Message& message);

}  // namespace quilmark
