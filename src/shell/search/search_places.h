// Where the parts of the search view stand now, by the state of the window and the settings. Interface
// thread.
#pragma once

#include "canvas/text_measure.h"
#include "shell/app/app_state.h"
#include "shell/search/layout.h"
#include "shell/search/list_layout.h"

namespace quilmark {

ListLayout PlaceList(const AppState& app);
SidebarLayout PlaceSidebar(const AppState& app);

// The buttons of the filter categories, and the height of all that stands above the list.
FilterBarLayout PlaceTagButtons(const AppState& app, const TextMeasure& fonts);

// Fits the path column to the rows in view.
void FitColumns(AppState& app, const TextMeasure& fonts);

}  // namespace quilmark
