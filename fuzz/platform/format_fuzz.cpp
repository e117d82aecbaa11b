// Any pattern: the arguments are read by their own types, the text outside the forms stays, and no form
// makes more than its width allows.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "platform/format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  std::u16string pattern(size / 2, u'\0');
  std::memcpy(pattern.data(), data, pattern.size() * sizeof(char16_t));
  for (char16_t& unit : pattern) unit = static_cast<char16_t>(unit & 0x7F);  // forms are ASCII

  // A pattern is never longer than its text and, for each of four arguments, the digits of the greatest
  // double, a point and a thousand decimals.
  constexpr size_t kLongestForm = 1'400;
  const std::u16string filled = FormatText(pattern, int64_t{-7}, u"text", 1e308, UINT64_MAX);
  if (filled.size() > pattern.size() + 4 * kLongestForm) std::abort();

  // Without arguments only "%%" becomes shorter.
  std::u16string plain = pattern;
  for (size_t at = plain.find(u"%%"); at != std::u16string::npos; at = plain.find(u"%%", at + 1))
    plain.erase(at, 1);
  if (FormatText(pattern) != plain) std::abort();
  return 0;
}
