// Where the parts of the search view stand now, by its state, the window and the settings. Interface
// thread.
#pragma once

#include "shell/search/columns.h"
#include "shell/search/layout.h"
#include "shell/search/search_view.h"

namespace quilmark {

// The view mode of the settings.
ViewMode ViewModeOfSettings();

// The style of the list in that mode, at 96 dpi.
ListStyle ListStyleOf(ViewMode mode);

// Where columns and rows stand, by the settings and the fitted path column.
ColumnsLayout PlaceColumns(const SearchView& view, const ViewContext& context);

// Puts the rows where the columns leave room. Their horizontal offset stays: else an edge that is
// dragged would run away from the mouse.
void PlaceList(SearchView& view, const ViewContext& context);

// Where the rows of the sidebar stand; without any where the tags are buttons.
SidebarLayout PlaceSidebar(const SearchView& view, const ViewContext& context);

// Where the tags' buttons stand, and the height of all that stands above the list.
FilterBarLayout PlaceTagButtons(const SearchView& view, const ViewContext& context);

// The part of the window that shows rows, columns and sidebar: from headerTop down.
Rect ListAreaOf(const SearchView& view, const ViewContext& context);

// Brings the offsets within their limits and fits the path column to the rows in view; the effects have
// the bars, the open editor and the hover follow.
Effects RelayoutList(SearchView& view, const ViewContext& context);

// Has the tags painted again, as buttons or as rows of the sidebar.
Effects RedrawTags(const SearchView& view, const ViewContext& context);

}  // namespace quilmark
