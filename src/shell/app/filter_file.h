// The file of the filter tags, as commands offer it to be edited or reset. Interface thread.
#pragma once

#include "shell/app/app_state.h"

namespace quilmark {

// Shows filters.ini selected in its folder; where that fails, opens it.
void ShowFilterFile(AppState& app);

// Asks, and has the next start begin with the default tags.
void ResetFilterTags(AppState& app, const ViewContext& context);

}  // namespace quilmark
