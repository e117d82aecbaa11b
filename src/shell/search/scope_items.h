// Entries of the box that says where a search looks. Interface thread.
#pragma once

#include <string>
#include <vector>

#include "index/search_engine.h"
#include "shell/app/app_state.h"

namespace quilmark {

// The entries anew, in the order of scopeIndex: all, the desktop, then one a volume of the list. The
// chosen drive stays chosen at the place that it has now; where it is gone, all are.
std::vector<std::u16string> RenewScopeItems(AppState& app, const SearchEngine& engine);

// The entry at `index` of those that were made last is chosen.
void ChooseScope(const AppState& app, int index);

}  // namespace quilmark
