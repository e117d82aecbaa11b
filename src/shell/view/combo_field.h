// The field of a drop list and the rows of its list.
#pragma once

#include <string_view>

#include "canvas/canvas.h"
#include "shell/view/view_context.h"

namespace quilmark {

// Paints the closed control; `field` is all of it. An empty text stands for no choice.
void PaintComboField(Canvas& canvas, const ViewContext& context, const Rect& field,
                     std::u16string_view text, bool hasFocus);

// What a row of the list is.
enum class ComboRow {
  kPlain,
  kSelected,
  kField,  // the closed field, which the system has drawn as a row too
};

// Paints one row of the list, its ground included.
void PaintComboRow(Canvas& canvas, const ViewContext& context, const Rect& row, std::u16string_view text,
                   ComboRow kind);

}  // namespace quilmark
