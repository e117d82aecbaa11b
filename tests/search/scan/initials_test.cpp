#include "search/scan/initials.h"

#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>

#include "support/code_page_936.h"

namespace quilmark {
namespace {

struct LetterRange {
  char16_t letter;
  uint16_t from, to;  // codes in code page 936
};

constexpr LetterRange kLetterRanges[] = {
    {u'a', 45217, 45252}, {u'b', 45253, 45760}, {u'c', 45761, 46317}, {u'd', 46318, 46825},
    {u'e', 46826, 47009}, {u'f', 47010, 47296}, {u'g', 47297, 47613}, {u'h', 47614, 48118},
    {u'j', 48119, 49061}, {u'k', 49062, 49323}, {u'l', 49324, 49895}, {u'm', 49896, 50370},
    {u'n', 50371, 50613}, {u'o', 50614, 50621}, {u'p', 50622, 50905}, {u'q', 50906, 51386},
    {u'r', 51387, 51445}, {u's', 51446, 52218}, {u't', 52219, 52697}, {u'w', 52698, 52979},
    {u'x', 52980, 53688}, {u'y', 53689, 54480}, {u'z', 54481, 55289},
};

char16_t LetterByCodePage(char16_t unit) {
  if (unit < 0x4E00 || unit > 0x9FFF) return 0;
  const auto code = CodePage936CodeOf(unit);
  if (!code) return 0;
  for (const LetterRange& range : kLetterRanges) {
    if (*code >= range.from && *code <= range.to) return range.letter;
  }
  return 0;
}

bool Matches(std::u16string_view name, std::u16string_view pattern) {
  return MatchesInitials(name.data(), name.size(), pattern);
}

// The key written out, and a plain search in it.
bool MatchesByKey(std::u16string_view name, std::u16string_view pattern) {
  std::u16string key;
  bool sawIdeograph = false;
  for (const char16_t unit : name.substr(0, name.find(u'.'))) {
    if (unit >= 0x4E00 && unit <= 0x9FFF) {
      sawIdeograph = true;
      if (const char16_t letter = InitialLetterOf(unit)) key += letter;
    } else if (unit < 0x80 && std::isalnum(unit)) {
      key += static_cast<char16_t>(std::tolower(unit));
    }
  }
  return !pattern.empty() && sawIdeograph && key.find(pattern) != key.npos;
}

TEST(InitialLetterOf, AgreesWithCodePage936ForEveryUnit) {
  size_t withLetter = 0;
  for (uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const char16_t expected = LetterByCodePage(static_cast<char16_t>(unit));
    ASSERT_EQ(InitialLetterOf(static_cast<char16_t>(unit)), expected) << std::hex << unit;
    withLetter += expected != 0;
  }
  // Level one of GB2312 alone has 3,755 characters; those of the extension come on top.
  EXPECT_GT(withLetter, 3'755u);
}

TEST(InitialLetterOf, GivesTheFirstLetterOfTheReading) {
  EXPECT_EQ(InitialLetterOf(u'\u554A'), u'a');  // a, the first character of level one
  EXPECT_EQ(InitialLetterOf(u'\u5317'), u'b');  // bei
  EXPECT_EQ(InitialLetterOf(u'\u4EAC'), u'j');  // jing
  EXPECT_EQ(InitialLetterOf(u'\u5EA7'), u'z');  // zuo, the last one
}

TEST(InitialLetterOf, CharactersOrderedByRadicalHaveNone) {
  EXPECT_EQ(InitialLetterOf(u'\u4E8D'), 0);  // the first character of level two
  EXPECT_EQ(InitialLetterOf(u'\u9F44'), 0);  // the last one
}

TEST(InitialLetterOf, OtherScriptsHaveNone) {
  for (const char16_t unit :
       {u'a', u'5', u'\u3042', u'\u4DFF', u'\uA000', u'\uAC00', char16_t{0xD840}}) {
    EXPECT_EQ(InitialLetterOf(unit), 0) << static_cast<int>(unit);
  }
}

TEST(MatchesInitials, FindsANameByTheReadingsOfItsCharacters) {
  EXPECT_TRUE(Matches(u"\u5317\u4EAC", u"bj"));
  EXPECT_TRUE(Matches(u"\u5317\u4EAC.txt", u"bj"));
  EXPECT_FALSE(Matches(u"\u4EAC\u5317.txt", u"bj"));
}

TEST(MatchesInitials, ALatinNameNeverMatches) {
  EXPECT_FALSE(Matches(u"bj.txt", u"bj"));
  EXPECT_FALSE(Matches(u"bj", u"bj"));
}

TEST(MatchesInitials, DigitsStayInTheKey) {
  EXPECT_TRUE(Matches(u"2024\u5E74\u62A5.xlsx", u"2024nb"));
  EXPECT_TRUE(Matches(u"2024\u5E74\u62A5.xlsx", u"24n"));
}

TEST(MatchesInitials, LatinLettersOfTheNameCountInEitherCase) {
  EXPECT_TRUE(Matches(u"Hi\u5317\u4EAC", u"hib"));
  EXPECT_TRUE(Matches(u"\u5317HI\u4EAC", u"bhij"));
}

TEST(MatchesInitials, BlanksPunctuationAndOtherScriptsAreNoPartOfTheKey) {
  EXPECT_TRUE(Matches(u"\u5317 - (\u3042)\u4EAC_\u0416x", u"bjx"));
}

TEST(MatchesInitials, AnIdeographWithoutALetterStillMakesTheNameChinese) {
  EXPECT_TRUE(Matches(u"a\u4E8Db", u"ab"));
  EXPECT_FALSE(Matches(u"\u4E8D", u"ab"));
}

TEST(MatchesInitials, TheStemEndsAtTheFirstDot) {
  EXPECT_FALSE(Matches(u"a.\u5317\u4EAC", u"bj"));
  EXPECT_FALSE(Matches(u"\u5317.\u4EAC", u"bj"));
  EXPECT_FALSE(Matches(u".\u5317\u4EAC", u"bj"));
}

TEST(MatchesInitials, NothingMatchesNothing) {
  EXPECT_FALSE(MatchesInitials(nullptr, 2, u"bj"));
  EXPECT_FALSE(Matches(u"", u"bj"));
  EXPECT_FALSE(Matches(u"\u5317\u4EAC", u""));
}

TEST(MatchesInitials, TheKeyIsComparedWithoutFoldingThePattern) {
  EXPECT_FALSE(Matches(u"\u5317\u4EAC", u"BJ"));
}

TEST(MatchesInitials, LooksThroughTheLongestName) {
  std::u16string name(65'535, u'-');
  name[0] = u'\u5317';
  name[65'534] = u'\u4EAC';
  EXPECT_TRUE(Matches(name, u"bj"));
  EXPECT_FALSE(Matches(name, u"jb"));
}

TEST(MatchesInitials, AgreesWithASearchInTheWrittenKey) {
  constexpr std::u16string_view alphabet = u"bBj2.- \u5317\u5317\u4EAC\u4E8D\u3042";
  std::mt19937 random(1);
  size_t hits = 0;
  for (int round = 0; round < 100'000; ++round) {
    std::u16string name(random() % 20, u' ');
    for (char16_t& unit : name) unit = alphabet[random() % alphabet.size()];
    std::u16string pattern(random() % 5, u' ');
    for (char16_t& unit : pattern) unit = u"bj2"[random() % 3];
    ASSERT_EQ(Matches(name, pattern), MatchesByKey(name, pattern)) << testing::PrintToString(name);
    hits += Matches(name, pattern);
  }
  EXPECT_GT(hits, 1'000u);
}

TEST(IsInitialsQuery, TakesOneTermOfTwoTo32LettersAndDigits) {
  EXPECT_TRUE(IsInitialsQuery({{u"bj"}}));
  EXPECT_TRUE(IsInitialsQuery({{u"2024nb"}}));
  EXPECT_TRUE(IsInitialsQuery({{std::u16string(32, u'z')}}));
}

TEST(IsInitialsQuery, RefusesOneLetterAnd33) {
  EXPECT_FALSE(IsInitialsQuery({{u"b"}}));
  EXPECT_FALSE(IsInitialsQuery({{std::u16string(33, u'z')}}));
}

TEST(IsInitialsQuery, RefusesAnyOtherCharacter) {
  for (const char16_t* term : {u"b-j", u"b j", u"bJ", u"b\u4EAC", u"b`", u"b{", u"b/", u"b:"}) {
    EXPECT_FALSE(IsInitialsQuery({{term}})) << testing::PrintToString(std::u16string(term));
  }
}

TEST(IsInitialsQuery, RefusesMoreOrLessThanOneTerm) {
  EXPECT_FALSE(IsInitialsQuery({}));
  EXPECT_FALSE(IsInitialsQuery({{}}));
  EXPECT_FALSE(IsInitialsQuery({{u"bj", u"sh"}}));
  EXPECT_FALSE(IsInitialsQuery({{u"bj"}, {u"sh"}}));
}

}  // namespace
}  // namespace quilmark
