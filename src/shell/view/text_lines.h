// A text in as many lines as its place has room for.
#pragma once

#include <span>
#include <string_view>

#include "canvas/canvas.h"
#include "shell/view/view_context.h"

namespace quilmark {

// Draws the text from the top of its place, each line centred. The last line that has room ends in an
// ellipsis where the text goes on.
void PaintLines(Canvas& canvas, const ViewContext& context, const Rect& place, std::u16string_view text,
                const TextStyle& style, const Marks& marks);

}  // namespace quilmark
