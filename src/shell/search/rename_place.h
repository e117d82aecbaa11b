// Where the editor of a name stands in the list.
#pragma once

#include <optional>

#include "canvas/rect.h"
#include "shell/search/columns.h"

namespace quilmark {

// Where an editor opens: over the Name column of a row at `row`. Empty where the row does not begin
// below the header and within the list.
std::optional<Rect> PlaceOfRenameEditor(const ColumnsLayout& layout, const Rect& row, int scrollX);

// The same for an editor that is open while the list scrolls: never empty, but far outside of the window
// where the row, or the beginning of its name, is not in view. It is not hidden, as it would lose the
// focus and with it what is typed.
Rect PlaceOfOpenRenameEditor(const ColumnsLayout& layout, const Rect& row, int scrollX);

}  // namespace quilmark
