// The controls of the search view: what they are, where they stand, what they report. Interface thread.
#pragma once

#include <string>

#include "shell/search/search_view.h"

namespace quilmark {

// The text of the search box has changed. Starts the timer of a search by name; a content query waits
// for Enter.
Effects TakeTypedText(SearchView& view, const ViewContext& context, std::u16string text);

}  // namespace quilmark
