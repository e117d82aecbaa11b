// Entries of the box that says where a search looks.
#pragma once

#include <string>
#include <vector>

#include "index/search_engine.h"

namespace quilmark {

// In the order of scopeIndex: all, the desktop, then one entry a volume of the list.
std::vector<std::u16string> ScopeItems(const SearchEngine& engine);

}  // namespace quilmark
