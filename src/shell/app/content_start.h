// How the program's content search learns of the user's choices. Interface thread.
#pragma once

#include "search/results/search_session.h"

namespace quilmark {

// Installs the content search, and gives it the choices of the moment at which a search begins. Before
// the first search.
void WireContentSearch(SearchHooks& hooks);

}  // namespace quilmark
