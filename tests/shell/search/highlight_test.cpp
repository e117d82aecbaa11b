#include "shell/search/highlight.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

using Ranges = std::vector<TextRange>;

TEST(Highlight, TakesTheTrimmedFoldedText) {
  EXPECT_EQ(HighlightTerm(u"  ReadMe "), u"readme");
  EXPECT_EQ(HighlightTerm(u" "), u"");
}

TEST(Highlight, TakesTheWordsOfAContentQuery) {
  EXPECT_EQ(HighlightTerm(u"S: Invoice |.pdf,.txt"), u"invoice");
  EXPECT_EQ(HighlightTerm(u"s:"), u"");
}

TEST(Highlight, MarksEveryOccurrence) {
  EXPECT_EQ(HighlightRanges(u"Banana-BANANA", u"ana"), (Ranges{{1, 3}, {8, 3}}));
  EXPECT_EQ(HighlightRanges(u"abc", u"x"), Ranges{});
  EXPECT_EQ(HighlightRanges(u"abc", u""), Ranges{});
  EXPECT_EQ(HighlightRanges(u"Ünïté.txt", u"ünï"), (Ranges{{0, 3}}));
  EXPECT_EQ(HighlightRanges(u"aaaa", u"aa"), (Ranges{{0, 2}, {2, 2}}));
}

}  // namespace
}  // namespace quilmark
