#include "platform/text.h"

#include <gtest/gtest.h>

#include <random>

namespace quilmark {
namespace {

std::u16string RandomUnits(std::mt19937& random, size_t size, char16_t limit) {
  std::uniform_int_distribution<unsigned> unit(0, limit);
  std::u16string text;
  for (size_t i = 0; i < size; ++i) text.push_back(static_cast<char16_t>(unit(random)));
  return text;
}

std::u16string FoldedOneByOne(std::u16string_view text) {
  std::u16string folded;
  for (const char16_t unit : text) folded.push_back(FoldUnit(unit));
  return folded;
}

TEST(FoldUnit, AddsThirtyTwoToTheLettersOfAsciiAndLeavesTheRestOfIt) {
  for (char16_t unit = 0; unit < 0x80; ++unit) {
    const bool isUpper = unit >= u'A' && unit <= u'Z';
    EXPECT_EQ(FoldUnit(unit), isUpper ? unit + 32 : unit) << static_cast<int>(unit);
  }
}

TEST(FoldUnit, FollowsTheSimpleLowerCaseMappingAboveAscii) {
  EXPECT_EQ(FoldUnit(u'\u00C4'), u'\u00E4');  // Latin
  EXPECT_EQ(FoldUnit(u'\u0130'), u'i');       // dotted capital I
  EXPECT_EQ(FoldUnit(u'\u0178'), u'\u00FF');
  EXPECT_EQ(FoldUnit(u'\u03A3'), u'\u03C3');  // Greek sigma
  EXPECT_EQ(FoldUnit(u'\u0416'), u'\u0436');  // Cyrillic
  EXPECT_EQ(FoldUnit(u'\u0531'), u'\u0561');  // Armenian
  EXPECT_EQ(FoldUnit(u'\u1E9E'), u'\u00DF');  // capital sharp s
  EXPECT_EQ(FoldUnit(u'\u212A'), u'k');       // Kelvin sign
  EXPECT_EQ(FoldUnit(u'\u13A0'), u'\uAB70');  // Cherokee
  EXPECT_EQ(FoldUnit(u'\uFF21'), u'\uFF41');  // full-width A
}

TEST(FoldUnit, LeavesWhatHasNoLowerCase) {
  EXPECT_EQ(FoldUnit(u'\u00DF'), u'\u00DF');
  EXPECT_EQ(FoldUnit(u'\u00D7'), u'\u00D7');  // multiplication sign, between capitals
  EXPECT_EQ(FoldUnit(u'\u4E2D'), u'\u4E2D');
  EXPECT_EQ(FoldUnit(u'\uFFFF'), u'\uFFFF');
}

TEST(FoldUnit, MapsEachSurrogateToItself) {
  for (unsigned unit = 0xD800; unit <= 0xDFFF; ++unit) {
    ASSERT_EQ(FoldUnit(static_cast<char16_t>(unit)), unit);
  }
}

TEST(FoldUnit, ChangesNothingTheSecondTime) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const char16_t once = FoldUnit(static_cast<char16_t>(unit));
    ASSERT_EQ(FoldUnit(once), once) << unit;
  }
}

TEST(FoldUnits, AgreesWithFoldingUnitByUnitAtEveryLengthAndStart) {
  std::mt19937 random(1);
  for (const char16_t limit : {u'\u007F', u'\u00FF', u'\uFFFF'}) {
    const std::u16string text = RandomUnits(random, 80, limit);
    for (size_t start = 0; start < 9; ++start) {
      for (size_t size = 0; size <= 64; ++size) {
        const std::u16string_view piece = std::u16string_view(text).substr(start, size);
        ASSERT_EQ(FoldText(piece), FoldedOneByOne(piece)) << start << " " << size;
      }
    }
  }
}

TEST(FoldUnits, FoldsEveryAsciiUnitInEveryPlaceOfABlock) {
  for (char16_t unit = 0; unit < 0x80; ++unit) {
    for (size_t place = 0; place < 24; ++place) {
      std::u16string text(24, u'Q');
      text[place] = unit;
      ASSERT_EQ(FoldText(text), FoldedOneByOne(text)) << static_cast<int>(unit) << " " << place;
    }
  }
}

TEST(FoldUnits, SeesASingleForeignUnitInEveryPlaceOfABlock) {
  for (size_t place = 0; place < 24; ++place) {
    std::u16string text(24, u'Q'), expected(24, u'q');
    text[place] = u'\u0416';
    expected[place] = u'\u0436';
    ASSERT_EQ(FoldText(text), expected) << place;
  }
}

TEST(FoldUnits, FoldsInPlace) {
  std::mt19937 random(2);
  for (size_t size = 0; size <= 64; ++size) {
    std::u16string text = RandomUnits(random, size, u'\u024F');
    const std::u16string expected = FoldedOneByOne(text);
    FoldUnits(text.data(), text.data(), text.size());
    ASSERT_EQ(text, expected);
  }
}

TEST(FoldUnits, WritesNothingBehindTheEnd) {
  for (size_t size = 0; size <= 20; ++size) {
    const std::u16string from(size, u'A');
    std::u16string to(size + 8, u'#');
    FoldUnits(from.data(), to.data(), size);
    ASSERT_EQ(to, std::u16string(size, u'a') + std::u16string(8, u'#'));
  }
}

TEST(CompareNoCase, OrdersByFoldedUnits) {
  EXPECT_TRUE(CompareNoCase(u"ABC", u"abc") == 0);
  EXPECT_TRUE(CompareNoCase(u"abc", u"ABD") < 0);
  EXPECT_TRUE(CompareNoCase(u"B", u"a") > 0);
  EXPECT_TRUE(CompareNoCase(u"a", u"_") > 0);  // "_" lies between the two cases of ASCII
  EXPECT_TRUE(CompareNoCase(u"A", u"_") > 0);
  EXPECT_TRUE(CompareNoCase(u"\u0416", u"\u0436") == 0);
}

TEST(CompareNoCase, PutsABeginningBeforeTheWhole) {
  EXPECT_TRUE(CompareNoCase(u"", u"a") < 0);
  EXPECT_TRUE(CompareNoCase(u"abc", u"AB") > 0);
  EXPECT_TRUE(CompareNoCase(u"", u"") == 0);
}

TEST(CompareNoCase, AgreesWithComparingFoldedTexts) {
  std::mt19937 random(3);
  std::uniform_int_distribution<size_t> length(0, 5);
  for (int round = 0; round < 20'000; ++round) {
    const std::u16string a = RandomUnits(random, length(random), u'\u0170');
    const std::u16string b = RandomUnits(random, length(random), u'\u0170');
    const int expected = FoldText(a).compare(FoldText(b));
    ASSERT_EQ(CompareNoCase(a, b) < 0, expected < 0);
    ASSERT_EQ(CompareNoCase(a, b) > 0, expected > 0);
  }
}

TEST(EqualNoCase, IgnoresCaseButNotLength) {
  EXPECT_TRUE(EqualNoCase(u"ReadMe.TXT", u"readme.txt"));
  EXPECT_TRUE(EqualNoCase(u"\u00C4RGER", u"\u00E4rger"));
  EXPECT_FALSE(EqualNoCase(u"readme", u"readme.txt"));
  EXPECT_FALSE(EqualNoCase(u"\u00DF", u"SS"));
}

TEST(ComparablePath, HasOneSpelling) {
  EXPECT_EQ(ComparablePath(u"C:/Dir\\\u0416.TXT"), u"c:\\dir\\\u0436.txt");
}

}  // namespace
}  // namespace quilmark
