// A sort that the user asked for. Interface thread.
#pragma once

#include "search/sort.h"
#include "shell/app/app_state.h"
#include "shell/view/window_port.h"

namespace quilmark {

// Refused with a status while the attribute cache is warmed up.
void RequestSort(const AppState& app, WindowPort& window, int column, Direction direction);

}  // namespace quilmark
