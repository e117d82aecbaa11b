#include "search/scan/initials.h"

#include <algorithm>

#include "platform/initial_letters.h"

namespace quilmark {

// A longer or shorter term is no list of initials that somebody types.
static constexpr size_t kLeastPattern = 2, kMostPattern = 32;

static bool IsLowerOrDigit(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9');
}

// The key of `stem` begins with `pattern`.
static bool KeyStartsWith(std::u16string_view stem, std::u16string_view pattern) {
  size_t matched = 0;
  for (size_t i = 0; i < stem.size() && matched < pattern.size(); ++i) {
    const char16_t unit = InitialsKeyUnitOf(stem[i]);
    if (unit == 0) continue;
    if (unit != pattern[matched]) return false;
    ++matched;
  }
  return matched == pattern.size();
}

// The key is never stored: it is made again from each place where it could match, which costs no memory
// and, with patterns of at most 32 units, little time.
bool MatchesInitials(const char16_t* name, size_t length, std::u16string_view pattern) {
  if (name == nullptr || length == 0 || pattern.empty()) return false;
  const std::u16string_view stem = InitialsStemOf({name, length});
  for (size_t start = 0; start < stem.size(); ++start) {
    if (InitialsKeyUnitOf(stem[start]) == pattern[0] && KeyStartsWith(stem.substr(start), pattern))
      return true;
  }
  return false;
}

bool IsInitialsQuery(const QueryGroups& prepared) {
  if (prepared.size() != 1 || prepared[0].size() != 1) return false;
  const std::u16string& term = prepared[0][0];
  if (term.size() < kLeastPattern || term.size() > kMostPattern) return false;
  return std::all_of(term.begin(), term.end(), IsLowerOrDigit);
}

}  // namespace quilmark
