// What the mouse does in the search view: rows, columns, scrollbars, sidebar, tips. Interface thread.
#pragma once

#include <optional>

#include "shell/search/search_view.h"

namespace quilmark {

// Answers what the mouse does in the view: see View::OnMouse.
Effects OnSearchMouse(SearchView& view, const ViewContext& context, const MouseEvent& event);

// Rows have moved below a mouse that stands still. `mouse` is where it stands, empty outside of the
// window.
Effects RefreshHover(SearchView& view, const ViewContext& context, std::optional<Point> mouse);

// True where the edge of a column can be dragged, or is being dragged.
bool IsColumnEdge(const SearchView& view, const ViewContext& context, Point point);

}  // namespace quilmark
