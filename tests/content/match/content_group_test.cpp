#include "content/match/content_group.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

using std::literals::operator""s;

TEST(ContentGroups, KeepTheOrderOfTheQuery) {
  const auto groups = MakeContentGroups({{u"b", u"a"}, {u"C"}});
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(groups[0].WideTerms, (std::vector<std::u16string>{u"b", u"a"}));
  EXPECT_EQ(groups[0].Utf8Terms, (std::vector<std::string>{"b", "a"}));
  EXPECT_EQ(groups[0].AnsiTerms, (std::vector<std::string>{"b", "a"}));
  EXPECT_EQ(groups[1].WideTerms, std::vector<std::u16string>{u"C"});
}

// Of a western system; others have another code page.
TEST(ContentGroups, HoldEachTermInItsThreeForms) {
  const auto groups = MakeContentGroups({{u"Gr\u00F6\u00DFe", u"\u0416\u0443\u043A"}});
  ASSERT_EQ(groups.size(), 1u);
  EXPECT_EQ(groups[0].Utf8Terms, (std::vector<std::string>{"Gr\xC3\xB6\xC3\x9F"
                                                           "e",
                                                           "\xD0\x96\xD1\x83\xD0\xBA"}));
  EXPECT_EQ(groups[0].AnsiTerms, (std::vector<std::string>{"Gr\xF6\xDF"
                                                           "e",
                                                           "???"}));
  EXPECT_EQ(WideBytesOf(groups[0].WideTerms[1]), "\x16\x04\x43\x04\x3A\x04"s);
}

TEST(ContentGroups, KnowTheirLongestForm) {
  EXPECT_EQ(LongestForm({}), 0u);
  EXPECT_EQ(LongestForm(MakeContentGroups({{u"abc"}, {u"a", u"abcde"}})), 10u);
  ContentGroup ragged;
  ragged.Utf8Terms = {"one", "and another"};
  ragged.WideTerms = {u"four", u"5", u"6"};
  EXPECT_EQ(LongestForm({ragged}), 11u);
  EXPECT_EQ(WidthOf(ragged), 3u);
}

TEST(ContentGroups, HaveNeedlesForEachTermTheyHave) {
  const auto groups = MakeContentGroups({{u"a", u"\u0416"}, {}});
  ASSERT_EQ(groups[0].needles.size(), 2u);
  EXPECT_EQ(groups[0].needles[0].size(), 1u);
  EXPECT_EQ(groups[0].needles[1].size(), 3u);
  EXPECT_EQ(WidthOf(groups[1]), 0u);
  EXPECT_TRUE(groups[1].needles.empty());
}

}  // namespace
}  // namespace quilmark
