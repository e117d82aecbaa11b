// The field of a drop list and the rows of its list.
#pragma once

#include <string_view>

#include "canvas/canvas.h"
#include "shell/view/view_context.h"

namespace quilmark {

// `field`: the whole control; nothing is chosen where the text is empty.
void PaintComboField(Canvas& canvas, const ViewContext& context, const Rect& field,
                     std::u16string_view text, bool hasFocus);

enum class ComboRow {
  kPlain,
  kSelected,
  kField
};  // kField: the closed field as the system has it drawn
void PaintComboRow(Canvas& canvas, const ViewContext& context, const Rect& row, std::u16string_view text,
                   ComboRow kind);

}  // namespace quilmark
