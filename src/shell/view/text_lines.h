// A text in as many lines as its place has room for.
#pragma once

#include <span>
#include <string_view>

#include "canvas/canvas.h"
#include "shell/view/view_context.h"

namespace quilmark {

// Each line in the middle, from the top; the last one ends in an ellipsis where the text goes on.
void PaintLines(Canvas& canvas, const ViewContext& context, const Rect& place, std::u16string_view text,
                const TextStyle& style, const Marks& marks);

}  // namespace quilmark
