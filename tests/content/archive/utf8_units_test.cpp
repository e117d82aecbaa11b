#include "content/archive/utf8_units.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "platform/utf.h"

namespace quilmark {
namespace {

std::optional<std::u16string> Units(std::string_view bytes, MalformedUtf8 malformed) {
  std::u16string units(bytes.size(), u'\0');
  const auto count = Utf8ToUnits(bytes, units.data(), malformed);
  if (!count) return std::nullopt;
  units.resize(*count);
  return units;
}

TEST(Utf8Units, RefusesWhatIsMalformed) {
  for (const char* bytes :
       {"\x80", "\xC1\x81", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
        "\xF5\x80\x80\x80", "\xE4\xB8", "abcdefghijklmnopqrstuvwxyz\xFF", "\xC3(", "\xE4\xB8("}) {
    EXPECT_FALSE(Units(bytes, MalformedUtf8::kRefused)) << bytes;
  }
  EXPECT_EQ(Units("", MalformedUtf8::kRefused), u"");
}

TEST(Utf8Units, TakesEveryCharacter) {
  std::string bytes;
  std::u16string units;
  for (char32_t character = 0; character <= 0x10FFFF; character += character < 0x3000 ? 1 : 61) {
    if (character >= 0xD800 && character <= 0xDFFF) continue;
    std::u16string one;
    if (character < 0x10000) {
      one = static_cast<char16_t>(character);
    } else {
      one = {static_cast<char16_t>(0xD7C0 + (character >> 10)),
             static_cast<char16_t>(0xDC00 + (character & 0x3FF))};
    }
    bytes += ToUtf8(one);
    units += one;
  }
  EXPECT_EQ(Units(bytes, MalformedUtf8::kRefused), units);
}

TEST(Utf8Units, ReplacesAsTheWholeProgramDoes) {
  std::mt19937 random(3);
  for (int i = 0; i < 20'000; ++i) {
    std::string bytes(random() % 60, 'a');
    for (char& byte : bytes) {
      if (random() % 4 == 0) byte = "\x80\xBF\xC3\xE4\xB8\xAD\xF0\x9F\x98\xED\xF4 z"[random() % 13];
    }
    const std::u16string expected = FromUtf8(bytes);
    ASSERT_EQ(Units(bytes, MalformedUtf8::kReplaced), expected) << testing::PrintToString(bytes);
    const bool isSound = ToUtf8(expected) == bytes;
    ASSERT_EQ(Units(bytes, MalformedUtf8::kRefused).has_value(), isSound)
        << testing::PrintToString(bytes);
  }
}

}  // namespace
}  // namespace quilmark
