// The life of the process: one running copy, the steps of its start in their order, its end.
#pragma once

#include "shell/app/app_state.h"
#include "shell/app/process_port.h"

namespace quilmark {

inline constexpr std::u16string_view kInstanceMutex = u"Quilmark_Singleton_Mutex_2024";

// Runs the program until it ends, and returns its exit code. A second copy has the first one show its
// window, and ends.
int RunProcess(AppState& app, ProcessPort& system);

}  // namespace quilmark
