// The end of the user's session: log-off, shutdown, restart. Interface thread.
#pragma once

#include <cstdint>

#include "shell/app/app_state.h"

namespace quilmark {

// The system ends the program soon after it has answered, and asks the user about one that does not.
inline constexpr uint32_t kMostSessionEndMs = 900;

// Saves what the end of the window saves, and ends nothing: settings, attributes and the summary of the
// run. Waits at most `mostMs` for the attributes; a save that a job has begun is waited for as well.
// They are left as they were saved last where nothing is new since, and where that save took longer.
void SaveAtSessionEnd(const AppState& app, WindowPort& window, uint32_t mostMs = kMostSessionEndMs);

}  // namespace quilmark
