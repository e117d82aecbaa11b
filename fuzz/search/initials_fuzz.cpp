// Any name and pattern: the answer is that of a plain search in the written key.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "search/scan/initials.h"

namespace quilmark {
namespace {

bool MatchesByKey(std::u16string_view name, std::u16string_view pattern) {
  std::u16string key;
  bool sawIdeograph = false;
  for (const char16_t unit : name.substr(0, name.find(u'.'))) {
    sawIdeograph |= unit >= 0x4E00 && unit <= 0x9FFF;
    if (const char16_t letter = InitialLetterOf(unit)) key += letter;
    if (unit >= u'A' && unit <= u'Z') key += static_cast<char16_t>(unit | 0x20);
    if ((unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9')) key += unit;
  }
  return !pattern.empty() && sawIdeograph && key.find(pattern) != key.npos;
}

// Units of two bytes, the last one perhaps of one.
std::u16string UnitsOf(const uint8_t* data, size_t size) {
  std::u16string text((size + 1) / sizeof(char16_t), u'\0');
  if (size > 0) std::memcpy(text.data(), data, size);
  return text;
}

}  // namespace
}  // namespace quilmark

// The first byte is the length of the pattern in bytes of ASCII; the name follows the pattern.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  if (size == 0) return 0;
  const size_t patternSize = data[0] < size ? data[0] : size - 1;
  const std::u16string pattern(data + 1, data + 1 + patternSize);
  const std::u16string name = UnitsOf(data + 1 + patternSize, size - 1 - patternSize);
  if (MatchesInitials(name.data(), name.size(), pattern) != MatchesByKey(name, pattern)) std::abort();
  if (IsInitialsQuery({{pattern}}) && (pattern.size() < 2 || pattern.size() > 32)) std::abort();
  return 0;
}
