// Where the tip of a row stands.
#pragma once

#include <cstdint>

#include "canvas/rect.h"

namespace quilmark {

// Right below the cursor, moved into the work area of its screen; screen pixels.
Point PlaceTip(Point cursor, int width, int height, const Rect& workArea, uint32_t dpi);

}  // namespace quilmark
