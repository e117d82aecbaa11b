#include "platform/utf.h"

#include <gtest/gtest.h>

#include <random>

namespace quilmark {
namespace {

using namespace std::string_literals;

std::string RandomBytes(std::mt19937& random, size_t size) {
  // Bytes that matter to a decoder come often: leads, continuations, the backslash.
  static constexpr unsigned char kOften[] = {0x5C, 0x7F, 0x80, 0x9F, 0xA0, 0xBF, 0xC2, 0xDF,
                                             0xE0, 0xE4, 0xED, 0xEF, 0xF0, 0xF4, 0xF5, 0xFF};
  std::uniform_int_distribution<unsigned> choice(0, 63);
  std::string bytes;
  for (size_t i = 0; i < size; ++i) {
    const unsigned n = choice(random);
    bytes.push_back(static_cast<char>(n < std::size(kOften) ? kOften[n] : 'a' + n % 26));
  }
  return bytes;
}

TEST(FromUtf8, DecodesEachLengthAtItsLimits) {
  EXPECT_EQ(FromUtf8("\0"s), u"\0"s);
  EXPECT_EQ(FromUtf8("\x7F"), u"\u007F");
  EXPECT_EQ(FromUtf8("\xC2\x80"), u"\u0080");
  EXPECT_EQ(FromUtf8("\xDF\xBF"), u"\u07FF");
  EXPECT_EQ(FromUtf8("\xE0\xA0\x80"), u"\u0800");
  EXPECT_EQ(FromUtf8("\xED\x9F\xBF"), u"\uD7FF");
  EXPECT_EQ(FromUtf8("\xEE\x80\x80"), u"\uE000");
  EXPECT_EQ(FromUtf8("\xEF\xBF\xBF"), u"\uFFFF");
  EXPECT_EQ(FromUtf8("\xF0\x90\x80\x80"), u"\U00010000");
  EXPECT_EQ(FromUtf8("\xF4\x8F\xBF\xBF"), u"\U0010FFFF");
}

TEST(FromUtf8, GivesOneReplacementForEachMalformedByte) {
  EXPECT_EQ(FromUtf8("a\x80z"), u"a\uFFFDz");                  // a continuation alone
  EXPECT_EQ(FromUtf8("a\xE4\xBDz"), u"a\uFFFD\uFFFDz");        // cut short
  EXPECT_EQ(FromUtf8("a\xC3"), u"a\uFFFD");                    // cut by the end
  EXPECT_EQ(FromUtf8("\xC0\xAF"), u"\uFFFD\uFFFD");            // longer than needed
  EXPECT_EQ(FromUtf8("\xE0\x9F\xBF"), u"\uFFFD\uFFFD\uFFFD");  // the same with three bytes
  EXPECT_EQ(FromUtf8("\xF0\x8F\xBF\xBF"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");            // a surrogate
  EXPECT_EQ(FromUtf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");  // above U+10FFFF
  EXPECT_EQ(FromUtf8("\xF5\xFE\xFF"), u"\uFFFD\uFFFD\uFFFD");
}

TEST(FromUtf8, KeepsAByteOrderMark) { EXPECT_EQ(FromUtf8("\xEF\xBB\xBFq"), u"\uFEFFq"); }

TEST(FromUtf8, KeepsABackslash) { EXPECT_EQ(FromUtf8("a\\b"), u"a\\b"); }

TEST(FromUtf8, FindsTheForeignCharacterInEveryPlaceOfALongText) {
  for (size_t place = 0; place <= 24; ++place) {
    std::string bytes(24, 'q');
    std::u16string expected(24, u'q');
    bytes.insert(place, "\xE4\xBD\xA0");
    expected.insert(place, u"\u4F60");
    ASSERT_EQ(FromUtf8(bytes), expected) << place;
  }
}

TEST(ToUtf8, ReversesWhatIsWellFormed) {
  for (const char* bytes :
       {"", "plain", "\xC3\xA9t\xC3\xA9", "\xE4\xBD\xA0\xE5\xA5\xBD", "\xF0\x9F\x8E\x89!"}) {
    EXPECT_EQ(ToUtf8(FromUtf8(bytes)), bytes);
  }
}

TEST(ToUtf8, ReversesEveryCharacter) {
  for (char32_t character = 0; character <= 0x10'FFFF; ++character) {
    if (character == 0xD800) character = 0xE000;
    std::u16string text;
    if (character < 0x1'0000) {
      text.push_back(static_cast<char16_t>(character));
    } else {
      text.push_back(static_cast<char16_t>(0xD800 + ((character - 0x1'0000) >> 10)));
      text.push_back(static_cast<char16_t>(0xDC00 + ((character - 0x1'0000) & 0x3FF)));
    }
    ASSERT_EQ(FromUtf8(ToUtf8(text)), text) << static_cast<unsigned>(character);
  }
}

TEST(ToUtf8, ReplacesALoneSurrogate) {
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D}), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::u16string{0xDC5C}), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D, u'a'}),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(ToUtf8(std::u16string{0xDE00, 0xD83D}), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D, 0xD83D, 0xDE00}), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(FromHostBytes, KeepsAForeignByteAsALoneSurrogate) {
  EXPECT_EQ(FromHostBytes("a\xFF"
                          "b"),
            (std::u16string{u'a', 0xDCFF, u'b'}));
  EXPECT_EQ(FromHostBytes("\xE4\xBD"), (std::u16string{0xDCE4, 0xDCBD}));
}

TEST(FromHostBytes, KeepsABackslashApartFromAPathSeparator) {
  EXPECT_EQ(FromHostBytes("a\\b"), (std::u16string{u'a', kNameBackslash, u'b'}));
}

TEST(FromHostBytes, FindsABackslashInEveryPlaceOfALongName) {
  for (size_t place = 0; place < 24; ++place) {
    std::string bytes(24, ']');  // the neighbour of the backslash
    std::u16string expected(24, u']');
    bytes[place] = '\\';
    expected[place] = kNameBackslash;
    ASSERT_EQ(FromHostBytes(bytes), expected) << place;
  }
}

TEST(AppendFromHostBytes, AddsBehindWhatIsThere) {
  std::u16string names = u"one";
  AppendFromHostBytes("two", names);
  AppendFromHostBytes("", names);
  AppendFromHostBytes("dr\xC3\xA9i", names);
  EXPECT_EQ(names, u"onetwodr\u00E9i");
}

TEST(ToHostBytes, GivesBackTheBytesOfAnyName) {
  std::mt19937 random(4);
  for (int round = 0; round < 50'000; ++round) {
    const std::string bytes = RandomBytes(random, static_cast<size_t>(round % 23));
    ASSERT_EQ(ToHostBytes(FromHostBytes(bytes)), bytes);
  }
}

TEST(ToHostBytes, ReplacesASurrogateThatStandsForNoByte) {
  EXPECT_EQ(ToHostBytes(std::u16string{0xDC41}), "\xEF\xBF\xBD");
  EXPECT_EQ(ToHostBytes(std::u16string{0xDC7F}), "\xEF\xBF\xBD");
  EXPECT_EQ(ToHostBytes(std::u16string{0xDD00}), "\xEF\xBF\xBD");
  EXPECT_EQ(ToHostBytes(std::u16string{0xD800}), "\xEF\xBF\xBD");
}

TEST(HostPair, AgreesWithTheTextPairOnNamesThatAreWellFormed) {
  const std::string bytes = "R\xC3\xA9sum\xC3\xA9 \xE4\xBD\xA0\xE5\xA5\xBD \xF0\x9F\x8E\x89.txt";
  EXPECT_EQ(FromHostBytes(bytes), FromUtf8(bytes));
}

}  // namespace
}  // namespace quilmark
