// What of a name the list marks as found.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// The folded text to look for in names: that of the search box, of a content query without its prefix
// and its extensions. Empty: nothing is marked.
std::u16string HighlightTerm(std::u16string_view searchBox);

struct TextRange {
  size_t begin = 0, length = 0;  // UTF-16 units

  bool operator==(const TextRange&) const = default;
};

// Every occurrence in the name, ignoring case, none over another.
std::vector<TextRange> HighlightRanges(std::u16string_view name, std::u16string_view term);

}  // namespace quilmark
