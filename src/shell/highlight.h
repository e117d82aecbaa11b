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

// The hits, or their parts, that stand in the line of `length` units from `begin`; counted from there.
std::vector<TextRange> RangesOfLine(const std::vector<TextRange>& hits, size_t begin, size_t length);

// Units of the line that begins a text of which `fitting` units fit: up to a blank where there is one,
// and never half a character. At least 1.
size_t LineLength(std::u16string_view text, size_t fitting);

}  // namespace quilmark
