// Where the editor of a name stands in the list.
#pragma once

#include <cstdint>
#include <optional>

#include "canvas/rect.h"
#include "shell/search/list_layout.h"

namespace quilmark {

// Over the Name column of a row that begins below the header; empty where the row is not in view.
std::optional<Rect> PlaceOfRenameEditor(const ListLayout& layout, int64_t scrollY, int scrollX,
                                        uint64_t row);

// The same for an editor that is open while the list scrolls: never empty, but far outside of the window
// where the row, or the beginning of its name, is not in view. It is not hidden, as it would lose the
// focus and with it what is typed.
Rect PlaceOfOpenRenameEditor(const ListLayout& layout, int64_t scrollY, int scrollX, uint64_t row);

}  // namespace quilmark
