// The rows of the results as they are painted, in all three views.
#pragma once

#include <cstdint>
#include <string_view>

#include "canvas/canvas.h"
#include "shell/list/list_colors.h"
#include "shell/search/list_layout.h"
#include "shell/search/search_view.h"
#include "shell/view/view_context.h"

namespace quilmark {

struct RowsPicture {
  const ViewContext& context;
  const ListLayout& layout;
  const ListColors& colors;
  const ListState& list;  // what is chosen, and what is under the mouse
  int64_t scrollY = 0;
  int scrollX = 0;
  std::u16string_view term;  // folded, to be marked in names
};

// Those in view, as far as the canvas shows them.
PaintOutcome PaintRows(Canvas& canvas, const RowsPicture& picture);

// The columns over the rows; nothing in the icon views.
void PaintHeader(Canvas& canvas, const RowsPicture& picture);

}  // namespace quilmark
