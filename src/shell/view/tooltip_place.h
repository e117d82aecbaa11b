// Where the tip of a row stands.
#pragma once

#include <cstdint>

#include "canvas/rect.h"

namespace quilmark {

// Left and top of a tip of that size: right below the cursor, moved into the work area of its screen.
// All places are pixels of the screen.
Point PlaceTip(Point cursor, int width, int height, const Rect& workArea, uint32_t dpi);

}  // namespace quilmark
