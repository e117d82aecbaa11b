// What of a name the list marks as found.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/canvas.h"

namespace quilmark {

// The folded text to be marked in names: that of the search box, and of a content query without its
// prefix and its extensions. Empty where nothing is to be marked.
std::u16string HighlightTerm(std::u16string_view searchBox);

// Every occurrence of the folded `term` in the name, whatever its case, none over another.
std::vector<TextRange> HighlightRanges(std::u16string_view name, std::u16string_view term);

}  // namespace quilmark
