// What the mouse does in the search view: rows, columns, scrollbars, sidebar, tips. Interface thread.
#pragma once

#include <optional>

#include "shell/search/search_view.h"

namespace quilmark {

Effects OnSearchMouse(SearchView& view, const ViewContext& context, const MouseEvent& event);

// Rows have moved below a mouse that stands still, at `mouse` where it is over the window.
Effects RefreshHover(SearchView& view, const ViewContext& context, std::optional<Point> mouse);

// True where the edge of a column can be taken, or is held.
bool IsColumnEdge(const SearchView& view, const ViewContext& context, Point point);

}  // namespace quilmark
