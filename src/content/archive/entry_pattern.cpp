#include "content/archive/entry_pattern.h"

#include <cstddef>

namespace quilmark {

bool MatchEntryPattern(std::string_view name, std::string_view pattern) {
  constexpr size_t kNone = std::string_view::npos;
  size_t at = 0, in = 0;
  size_t star = kNone, retry = 0;  // the latest star passed, and where what stands behind it was tried
  while (at < name.size()) {
    if (in < pattern.size() && pattern[in] == '*') {
      star = in++;
      retry = at;
      // The last star takes all that is left, which is something.
      if (in == pattern.size()) return true;
    } else if (in < pattern.size() && pattern[in] == name[at]) {
      ++in;
      ++at;
    } else if (star != kNone) {
      // An earlier star never helps where the latest one cannot: it could only come later.
      in = star + 1;
      at = ++retry;
    } else {
      return false;
    }
  }
  return in == pattern.size();
}

}  // namespace quilmark
