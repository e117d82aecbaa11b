#include "canvas/line_marks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quilmark {
namespace {

using Ranges = std::vector<TextRange>;

TEST(RangesOfLine, AreTheHitsAndPartsOfHitsInIt) {
  const std::vector<TextRange> hits = {{1, 2}, {5, 4}, {12, 1}};
  const auto line = RangesOfLine(hits, 2, 5);
  ASSERT_EQ(line.size(), 2u);
  EXPECT_EQ(line[0].begin, 0u);
  EXPECT_EQ(line[0].length, 1u);
  EXPECT_EQ(line[1].begin, 3u);
  EXPECT_EQ(line[1].length, 2u);
  EXPECT_TRUE(RangesOfLine(hits, 9, 3).empty());
}

using Spans = std::vector<PixelSpan>;

TEST(JoinSpans, PutsUnitsTogetherThatTouch) {
  EXPECT_EQ(JoinSpans({}), Spans{});
  EXPECT_EQ(JoinSpans({{0, 5}, {5, 9}}), (Spans{{0, 9}}));
  EXPECT_EQ(JoinSpans({{0, 5}, {6, 9}}), (Spans{{0, 5}, {6, 9}}));
}

TEST(JoinSpans, TakesUnitsFromRightToLeft) {
  EXPECT_EQ(JoinSpans({{30, 20}, {20, 12}, {12, 8}}), (Spans{{8, 30}}));
  // A hit over the border of two directions stands in two places.
  EXPECT_EQ(JoinSpans({{0, 6}, {6, 10}, {50, 40}, {40, 35}}), (Spans{{0, 10}, {35, 50}}));
}

TEST(JoinSpans, LeavesOutUnitsWithoutAWidth) {
  EXPECT_EQ(JoinSpans({{4, 4}, {10, 12}, {12, 12}}), (Spans{{10, 12}}));
  EXPECT_EQ(JoinSpans({{0, 20}, {5, 8}}), (Spans{{0, 20}}));
}

TEST(ShownUnits, EndsBeforeTheEllipsis) {
  EXPECT_EQ(ShownUnits(u"report.txt", u"report.txt"), 10u);
  EXPECT_EQ(ShownUnits(u"report.txt", u"repo..."), 4u);
  EXPECT_EQ(ShownUnits(u"a...txt", u"a..."), 1u);  // the text's own dots are not shown
  EXPECT_EQ(ShownUnits(u"report.txt", u"..."), 0u);
  EXPECT_EQ(ShownUnits(u"report.txt", u""), 0u);
  EXPECT_EQ(ShownUnits(u"", u""), 0u);
}

TEST(LineLength, BreaksAtABlankOrWhereNoCharacterIsCut) {
  EXPECT_EQ(LineLength(u"a long name", 7), 7u);  // "a long "
  EXPECT_EQ(LineLength(u"a long name", 6), 7u);  // the blank itself takes no room
  EXPECT_EQ(LineLength(u"a long name", 5), 2u);  // "a "
  EXPECT_EQ(LineLength(u"longname", 5), 5u);
  EXPECT_EQ(LineLength(u"longname", 8), 8u);
  EXPECT_EQ(LineLength(u"longname", 0), 1u);
  EXPECT_EQ(LineLength(u"a\U0001F33Fb", 2), 1u);
  EXPECT_EQ(LineLength(u"\U0001F33F\U0001F33F", 1), 2u);
  EXPECT_EQ(LineLength(u"", 3), 0u);
}

TEST(InkLength, LeavesOutTheBlanksAtTheEnd) {
  EXPECT_EQ(InkLength(u"a long "), 6u);
  EXPECT_EQ(InkLength(u"a long"), 6u);
  EXPECT_EQ(InkLength(u"  "), 0u);
  EXPECT_EQ(InkLength(u""), 0u);
  // What is drawn of a line always fits.
  for (size_t fitting = 1; fitting < 11; ++fitting) {
    const std::u16string text = u"a long name";
    EXPECT_LE(InkLength(text.substr(0, LineLength(text, fitting))), fitting);
  }
}

}  // namespace
}  // namespace quilmark
