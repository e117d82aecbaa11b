#include "canvas/table_measure.h"

#include <gtest/gtest.h>

#include <string>

namespace quilmark {
namespace {

TEST(TableMeasure, AddsUpTheWidthsOfCharacters) {
  const TableMeasure fonts(96);
  const int one = fonts.WidthOf(FontRole::kList, u"n");
  EXPECT_GT(one, 0);
  EXPECT_EQ(fonts.WidthOf(FontRole::kList, u""), 0);
  EXPECT_EQ(fonts.WidthOf(FontRole::kList, std::u16string(1'000, u'n')), 1'000 * one);
  EXPECT_EQ(fonts.WidthOf(FontRole::kList, u"\u4E2D"), 13);  // as wide as the font is high
  EXPECT_EQ(fonts.WidthOf(FontRole::kTitle, u"\u4E2D\u6587"), 2 * 17);
}

TEST(TableMeasure, TakesAPairOfSurrogatesForOneCharacter) {
  const TableMeasure fonts(96);
  EXPECT_EQ(fonts.WidthOf(FontRole::kList, u"\U00020000"), 13);
  EXPECT_EQ(fonts.WidthOf(FontRole::kList, u"\xDC00"), 0);
}

TEST(TableMeasure, BoldLettersAreWider) {
  const TableMeasure fonts(192);
  EXPECT_GT(fonts.WidthOf(FontRole::kHeader, u"Modified"), fonts.WidthOf(FontRole::kMain, u"Modified"));
}

TEST(TableMeasure, GrowsWithTheScale) {
  for (const FontRole font : {FontRole::kMain, FontRole::kTitle}) {
    const TableMeasure one(96), two(192);
    EXPECT_NEAR(two.WidthOf(font, u"annals-39.txt"), 2 * one.WidthOf(font, u"annals-39.txt"), 13);
    EXPECT_NEAR(two.LineHeight(font), 2 * one.LineHeight(font), 2);
  }
  EXPECT_NE(TableMeasure(96).Version(), TableMeasure(120).Version());
}

TEST(TableMeasure, RunsWiderOrNarrowerAsIsWanted) {
  const std::u16string_view text = u"Type a part of a name";
  const int plain = TableMeasure(288).WidthOf(FontRole::kList, text);
  EXPECT_NEAR(TableMeasure(288, 125).WidthOf(FontRole::kList, text), plain * 125 / 100, 11);
  EXPECT_NEAR(TableMeasure(288, 85).WidthOf(FontRole::kList, text), plain * 85 / 100, 11);
}

TEST(TableMeasure, CutsWhereTheNextUnitWouldNotFit) {
  const TableMeasure fonts(96);
  const std::u16string_view text = u"name";
  EXPECT_EQ(fonts.UnitsWithin(FontRole::kList, text, 0), 0u);
  EXPECT_EQ(fonts.UnitsWithin(FontRole::kList, text, -5), 0u);
  for (size_t units = 1; units <= text.size(); ++units) {
    const int width = fonts.WidthOf(FontRole::kList, text.substr(0, units));
    EXPECT_EQ(fonts.UnitsWithin(FontRole::kList, text, width), units);
    EXPECT_EQ(fonts.UnitsWithin(FontRole::kList, text, width - 1), units - 1);
  }
  EXPECT_EQ(fonts.UnitsWithin(FontRole::kList, text, 10'000), text.size());
}

}  // namespace
}  // namespace quilmark
