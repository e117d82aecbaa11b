// The ANSI code page of a POSIX host is 1252, as on a western Windows.
#include <algorithm>
#include <array>

#include "platform/code_pages.h"
#include "platform/code_pages_ansi.h"

namespace quilmark {

namespace {

// Characters of the bytes 0x80 to 0x9F. The five bytes without a character stand for the control codes
// of the same number, as Windows has them; every other byte is the character of its number.
constexpr std::array<char16_t, 32> kHighControls = {
    u'\u20AC', 0x81,      u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', 0x8D,      u'\u017D', 0x8F,
    0x90,      u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', 0x9D,      u'\u017E', u'\u0178',
};

std::optional<char> ByteOf(char16_t unit) {
  const bool isOwnNumber = unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF);
  if (isOwnNumber) return static_cast<char>(unit);
  const auto found = std::find(kHighControls.begin(), kHighControls.end(), unit);
  if (found == kHighControls.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - kHighControls.begin()));
}

}  // namespace

bool AnsiIsUtf8() { return false; }

size_t AnsiToUnits(std::string_view bytes, char16_t* out) {
  for (size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    const bool isHighControl = byte >= 0x80 && byte < 0xA0;
    out[i] = isHighControl ? kHighControls[byte - 0x80] : char16_t{byte};
  }
  return bytes.size();
}

std::optional<std::string> EncodeAnsi(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char16_t unit : text) {
    const std::optional<char> byte = ByteOf(unit);
    if (!byte) return std::nullopt;
    bytes.push_back(*byte);
  }
  return bytes;
}

std::string EncodeAnsiLossy(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char16_t unit : text) bytes.push_back(ByteOf(unit).value_or('?'));
  return bytes;
}

}  // namespace quilmark
