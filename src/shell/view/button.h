// A button that is painted here.
#pragma once

#include <string_view>

#include "canvas/canvas.h"
#include "shell/view/view_context.h"

namespace quilmark {

// How a button is to look.
struct ButtonLook {
  bool isPrimary = false;  // the one that does what the window is for
  bool isHot = false, isPressed = false, isEnabled = true, hasFocus = false;
};

// Paints the button over all of its place, the caption in the middle, with an ellipsis where it is too
// long.
void PaintButton(Canvas& canvas, const ViewContext& context, const Rect& place,
                 std::u16string_view caption, const ButtonLook& look);

}  // namespace quilmark
