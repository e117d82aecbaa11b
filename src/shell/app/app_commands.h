// The commands that concern the window as a whole. Interface thread.
#pragma once

#include <cstdint>

#include "shell/app/app_state.h"

namespace quilmark {

// Runs a command of commands.h. isTaken is false for one that is left to the shown view.
Effects RunAppCommand(AppState& app, const ViewContext& context, uint16_t id);

}  // namespace quilmark
