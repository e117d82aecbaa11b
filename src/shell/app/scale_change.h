// The window moved to a screen of another scale.
#pragma once

#include <cstdint>

#include "config/window_settings.h"
#include "shell/app/app_state.h"

namespace quilmark {

// Rescales what is kept in pixels. False, and nothing done, where the scale is what it was; 0 counts as
// 96 on both sides.
bool TakeScaleChange(AppState& app, WindowSettings& settings, uint32_t newDpi);

}  // namespace quilmark
