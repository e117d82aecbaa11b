// What the timers of the main window do. Interface thread.
#pragma once

#include <cstdint>

#include "shell/app/app_state.h"
#include "shell/view/window_port.h"

namespace quilmark {

// Runs the timer `id`, stopped first unless it repeats. False for an unknown one.
bool FireTimer(AppState& app, WindowPort& window, uint32_t id);

// Has the drives looked for again in a while, unless that is to come already. For whoever finds no
// volume ready.
void RetrySyncLater(AppState& app, WindowPort& window);

// Fills the attribute cache; no column is sorted by until that is done, or half a minute has passed.
void StartPrewarm(AppState& app, WindowPort& window);

// Every timer of the window, in the order in which the end of the window stops them.
inline constexpr uint32_t kAllTimers[] = {30002, 30003, 30004, 30005, 30006, 30007,
                                          30008, 30014, 30009, 30010, 30011, 30013};

// The list moves still: a thumb is held, or the last step was under 350 ms ago.
bool IsScrolling(const AppState& app, uint64_t nowMs);

}  // namespace quilmark
