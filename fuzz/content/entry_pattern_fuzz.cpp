// A line of pattern and the rest as a name: the answer is that of a table of all prefixes.
#include "content/archive/entry_pattern.h"

#include <vector>

#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

// matches[j]: the pattern so far matches the first j bytes of the name.
bool MatchPlainly(std::string_view name, std::string_view pattern) {
  std::vector<bool> matches(name.size() + 1);
  matches[0] = true;
  for (size_t i = 0; i < pattern.size(); ++i) {
    const bool isLast = i + 1 == pattern.size();
    std::vector<bool> next(name.size() + 1);
    for (size_t j = 0; j <= name.size(); ++j) {
      if (pattern[i] != '*') {
        next[j] = j > 0 && matches[j - 1] && name[j - 1] == pattern[i];
      } else {
        // One at the end stands for one byte at least.
        next[j] = (j > 0 && (next[j - 1] || matches[j - 1])) || (!isLast && matches[j]);
      }
    }
    matches = next;
  }
  return matches[name.size()];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, std::min<size_t>(size, 1000));
  const std::string pattern = input.TakeLine();
  const std::string_view name = input.RestAsText();
  Require(MatchEntryPattern(name, pattern) == MatchPlainly(name, pattern));
  return 0;
}
