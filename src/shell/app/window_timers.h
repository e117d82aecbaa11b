// What the timers of the window itself do. Interface thread.
#pragma once

#include <cstdint>

#include "shell/app/app_state.h"

namespace quilmark {

// Answers a timer of the app, which is stopped already unless it repeats.
Effects OnAppTimer(AppState& app, const ViewContext& context, uint32_t id);

// Every timer of the window, in the order in which the end of the window stops them.
inline constexpr uint32_t kAllTimers[] = {30002, 30003, 30004, 30005, 30006, 30007,
                                          30008, 30014, 30009, 30010, 30011, 30013};

}  // namespace quilmark
