// A sort that the user asked for. Interface thread.
#pragma once

#include "search/sort/sort.h"
#include "shell/search/search_view.h"

namespace quilmark {

// Has the held set sorted by a column of sort.h. Refused with a status line while the attribute cache is
// being filled.
Effects RequestSort(SearchView& view, const ViewContext& context, int column, Direction direction);

}  // namespace quilmark
