#include "platform/code_pages.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(EncodeText, GivesUtf8) {
  EXPECT_EQ(EncodeText(u"", CodePage::kUtf8), "");
  EXPECT_EQ(EncodeText(u"r\u00E9sum\u00E9 \u4F60 \U0001F389", CodePage::kUtf8),
            "r\xC3\xA9sum\xC3\xA9 \xE4\xBD\xA0 \xF0\x9F\x8E\x89");
}

TEST(EncodeText, HasNoUtf8ForALoneSurrogate) {
  EXPECT_EQ(EncodeText(std::u16string{u'a', 0xD83C}, CodePage::kUtf8), std::nullopt);
  EXPECT_EQ(EncodeText(std::u16string{0xDF89, u'a'}, CodePage::kUtf8), std::nullopt);
  EXPECT_EQ(EncodeText(std::u16string{0xD83C, 0xD83C, 0xDF89}, CodePage::kUtf8), std::nullopt);
}

TEST(EncodeText, KeepsAsciiInTheAnsiCodePage) {
  std::u16string text;
  std::string bytes;
  for (char byte = 1; byte < 127; ++byte) {
    text.push_back(static_cast<char16_t>(byte));
    bytes.push_back(byte);
  }
  EXPECT_EQ(EncodeText(text, CodePage::kAnsi), bytes);
  EXPECT_EQ(EncodeText(u"", CodePage::kAnsi), "");
}

// The tests below hold where the ANSI code page is 1252: on POSIX hosts and on a Windows of a western
// language.

TEST(EncodeText, GivesLatinLettersTheirOwnNumberInTheAnsiCodePage) {
  EXPECT_EQ(EncodeText(u"\u00A0\u00C4\u00E9\u00FF", CodePage::kAnsi), "\xA0\xC4\xE9\xFF");
}

TEST(EncodeText, GivesTheSignsOf1252TheirBytes) {
  EXPECT_EQ(EncodeText(u"\u20AC\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u017D",
                       CodePage::kAnsi),
            "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E");
  EXPECT_EQ(
      EncodeText(u"\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u017E\u0178",
                 CodePage::kAnsi),
      "\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F");
}

TEST(EncodeText, HasNoAnsiFormForAForeignCharacterAndPutsNoOtherInItsPlace) {
  EXPECT_EQ(EncodeText(u"a\u4F60", CodePage::kAnsi), std::nullopt);
  EXPECT_EQ(EncodeText(u"\u0416", CodePage::kAnsi), std::nullopt);
  EXPECT_EQ(EncodeText(u"\u0100", CodePage::kAnsi), std::nullopt);
  EXPECT_EQ(EncodeText(u"\uFF21", CodePage::kAnsi), std::nullopt);
  EXPECT_EQ(EncodeText(u"\U0001F389", CodePage::kAnsi), std::nullopt);
  EXPECT_EQ(EncodeText(std::u16string{0xD83C}, CodePage::kAnsi), std::nullopt);
}

TEST(EncodeAnsiLossy, PutsTheDefaultCharacterWhereOneHasNoForm) {
  EXPECT_EQ(EncodeAnsiLossy(u""), "");
  EXPECT_EQ(EncodeAnsiLossy(u"na\u00EFve \u20AC"), "na\xEFve \x80");
  EXPECT_EQ(EncodeAnsiLossy(u"a\u0416\u4F60b"), "a??b");
}

}  // namespace
}  // namespace quilmark
