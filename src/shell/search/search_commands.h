// The commands of the search view. Interface thread.
#pragma once

#include <cstdint>

#include "shell/search/search_view.h"

namespace quilmark {

// Runs a command of commands.h. isTaken is false for one that is not the view's.
Effects RunSearchCommand(SearchView& view, const ViewContext& context, uint16_t id);

// Answers the right button, let go in the list: its menu opens. A row under it is chosen first; one of
// several that are chosen only gets the focus.
Effects OpenContextMenu(SearchView& view, const ViewContext& context, Point at);

}  // namespace quilmark
