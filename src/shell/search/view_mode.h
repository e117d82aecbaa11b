// How the rows and the filter categories are shown. Interface thread.
#pragma once

#include "shell/search/columns.h"
#include "shell/search/search_view.h"

namespace quilmark {

// Shows the rows in another way, from the top, and saves the choice.
Effects SetViewMode(SearchView& view, const ViewContext& context, ViewMode mode);

// Puts the tags into the sidebar or into the bar, and saves the choice.
Effects SetFilterLayout(SearchView& view, const ViewContext& context, bool sidebar);

}  // namespace quilmark
