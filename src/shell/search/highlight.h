// What of a name the list marks as found.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/canvas.h"

namespace quilmark {

// The folded text to look for in names: that of the search box, of a content query without its prefix
// and its extensions. Empty: nothing is marked.
std::u16string HighlightTerm(std::u16string_view searchBox);

// Every occurrence in the name, ignoring case, none over another.
std::vector<TextRange> HighlightRanges(std::u16string_view name, std::u16string_view term);

}  // namespace quilmark
