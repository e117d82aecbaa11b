// A sort that the user asked for. Interface thread.
#pragma once

#include "search/sort/sort.h"
#include "shell/search/search_view.h"

namespace quilmark {

// Refused with a status while the attribute cache is warmed up.
Effects RequestSort(SearchView& view, const ViewContext& context, int column, Direction direction);

}  // namespace quilmark
