// The refresh by hand of volumes that no journal keeps up to date. Interface thread.
#pragma once

#include "shell/app/app_state.h"

namespace quilmark {

// Has all of them walked again, on a job that posts WM_NON_NTFS_REFRESHED, and says so in the status
// line. Does nothing where there is none.
void RefreshNonNtfs(const AppState& app, const ViewContext& context);

}  // namespace quilmark
