// The system's colours while it asks for high contrast.
#pragma once

#include <optional>

#include "config/system_palette.h"

namespace quilmark {

// Empty while it does not. The program of the window tests puts its own answer here.
extern std::optional<SystemColors> (*readHighContrast)();

}  // namespace quilmark
