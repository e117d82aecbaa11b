// Matching of Chinese names by the first letters of their pinyin.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/initial_letters.h"
#include "search/query/query.h"

namespace quilmark {

// True if `pattern` is a substring of the key of the stem (what stands before the first "."): letters
// folded, digits, and the initials of ideographs, of which there must be one.
bool MatchesInitials(const char16_t* name, size_t length, std::u16string_view pattern);

// The prepared query allows initial-letter matching: one group of one term of 2 to 32 characters a-z,
// 0-9.
bool IsInitialsQuery(const QueryGroups& prepared);

}  // namespace quilmark
