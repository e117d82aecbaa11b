// Entries of the box that says where a search looks. Interface thread.
#pragma once

#include <string>
#include <vector>

#include "index/engine/search_engine.h"
#include "shell/search/search_view.h"

namespace quilmark {

// The entries anew, in the order of scopeIndex: all, the desktop, then one a volume of the list. The
// chosen drive stays chosen at the place that it has now; where it is gone, all are.
std::vector<std::u16string> RenewScopeItems(SearchView& view, const SearchEngine& engine);

// The same into the box of the window.
void RebuildScopeBox(SearchView& view, const ViewContext& context);

// The entry at `index` of those that were made last is chosen; it holds from the next search on.
void ChooseScope(const SearchView& view, int index);

}  // namespace quilmark
