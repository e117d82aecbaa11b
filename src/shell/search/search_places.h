// Where the parts of the search view stand now, by its state, the window and the settings. Interface
// thread.
#pragma once

#include "shell/search/columns.h"
#include "shell/search/layout.h"
#include "shell/search/search_view.h"

namespace quilmark {

// How the rows are shown.
ViewMode ViewModeOfSettings();
ListStyle ListStyleOf(ViewMode mode);

ColumnsLayout PlaceColumns(const SearchView& view, const ViewContext& context);

// Puts the rows where the columns leave room. How far they stand to the left stays: an edge that is
// dragged would run away from the mouse.
void PlaceList(SearchView& view, const ViewContext& context);

SidebarLayout PlaceSidebar(const SearchView& view, const ViewContext& context);

// The buttons of the filter categories, and the height of all that stands above the list.
FilterBarLayout PlaceTagButtons(const SearchView& view, const ViewContext& context);

// What shows rows, columns and sidebar: from headerTop down.
Rect ListAreaOf(const SearchView& view, const ViewContext& context);

// Scroll offsets and path column as the rows in view want them; then the bars, the open editor and what
// is under the mouse follow.
Effects RelayoutList(SearchView& view, const ViewContext& context);

// The filter categories are drawn anew, wherever they stand.
Effects RedrawTags(const SearchView& view, const ViewContext& context);

}  // namespace quilmark
