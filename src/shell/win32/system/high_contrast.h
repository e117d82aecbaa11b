// The system's colours while it asks for high contrast.
#pragma once

#include <optional>

#include "config/system_palette.h"

namespace quilmark {

// Gives those colours, or nothing while high contrast is off. The program of the window tests puts its
// own answer here. Interface thread.
extern std::optional<SystemColors> (*readHighContrast)();

}  // namespace quilmark
