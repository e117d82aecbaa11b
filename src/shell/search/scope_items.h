// Entries of the box that says where a search looks. Interface thread.
#pragma once

#include <string>
#include <vector>

#include "index/engine/search_engine.h"
#include "shell/search/search_view.h"

namespace quilmark {

// Makes the entries anew, in the order of scopeIndex: all drives, the Desktop, then one for each volume.
// The chosen drive stays chosen at the place that it has now; where it is gone, all drives are chosen.
std::vector<std::u16string> RenewScopeItems(SearchView& view, const SearchEngine& engine);

// The same, and puts the entries into the box.
void RebuildScopeBox(SearchView& view, const ViewContext& context);

// Chooses the entry at `index` of those that were made last. It holds from the next search on.
void ChooseScope(const SearchView& view, int index);

}  // namespace quilmark
