#include "shell/view/tooltip_place.h"

#include <algorithm>

#include "canvas/scale.h"

namespace quilmark {

Point PlaceTip(Point cursor, int width, int height, const Rect& workArea, uint32_t dpi) {
  const int x = std::min(cursor.x + ScaleFor(dpi, 12), workArea.right - width);
  const int y = std::min(cursor.y + ScaleFor(dpi, 20), workArea.bottom - height);
  return {std::max(x, workArea.left), std::max(y, workArea.top)};
}

}  // namespace quilmark
