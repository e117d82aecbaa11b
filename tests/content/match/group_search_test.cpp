#include "content/match/group_search.h"

#include <gtest/gtest.h>

#include <random>

namespace quilmark {
namespace {

using std::literals::operator""s;

bool Holds(const std::vector<ContentGroup>& groups, std::string_view bytes) {
  return SearchGroupsInBytes(bytes.data(), bytes.data() + bytes.size(), groups, Ticket::Unlimited());
}

bool Holds(const QueryGroups& groups, std::string_view bytes) {
  return Holds(MakeContentGroups(groups), bytes);
}

TEST(SearchGroups, OneGroupWithAllItsTermsIsEnough) {
  const QueryGroups groups = {{u"red", u"green"}, {u"blue"}};
  EXPECT_TRUE(Holds(groups, "green before red"));
  EXPECT_TRUE(Holds(groups, "only blue"));
  EXPECT_FALSE(Holds(groups, "only red"));
  EXPECT_FALSE(Holds(groups, ""));
}

TEST(SearchGroups, FindAKeywordOfUtf16WithAByteOrderMark) {
  EXPECT_TRUE(Holds({{u"word"}},
                    "\xFF\xFE"
                    "a\0 \0w\0o\0r\0d\0"s));
  EXPECT_FALSE(Holds({{u"word"}}, "\xFE\xFF\0a\0 \0w\0o\0r\0d"s)) << "the other order of bytes";
}

TEST(SearchGroups, FindAWideFormAtAnOddOffset) { EXPECT_TRUE(Holds({{u"word"}}, "xw\0o\0r\0d\0"s)); }

TEST(SearchGroups, ACapitalIsNoSmallLetter) {
  EXPECT_FALSE(Holds({{u"Word"}}, "a word and w\0o\0r\0d\0"s));
  EXPECT_TRUE(Holds({{u"Word"}}, "a Word"));
}

TEST(SearchGroups, TermsOfOneGroupMayHaveDifferentForms) {
  EXPECT_TRUE(Holds({{u"one", u"two", u"\u00FC"}}, "t\0w\0o\0 one \xFC"s));
}

TEST(SearchGroups, TheLossyFormIsSearchedAllTheSame) {
  EXPECT_TRUE(Holds({{u"\u0416\u0443"}}, "what??"));
  EXPECT_FALSE(Holds({{u"\u0416\u0443"}}, "what?"));
}

TEST(SearchGroups, AGroupWithoutTermsIsPassedOver) {
  EXPECT_FALSE(Holds(QueryGroups{{}}, "anything"));
  EXPECT_TRUE(Holds(QueryGroups{{}, {u"thing"}}, "anything"));
  EXPECT_FALSE(Holds(QueryGroups{}, "anything"));
}

TEST(SearchGroups, ListsOfDifferentLengthsAndEmptyFormsAreTakenAsTheyAre) {
  ContentGroup group;
  group.Utf8Terms = {"", "two"};
  group.WideTerms = {u"one"};
  EXPECT_TRUE(Holds({group}, "two o\0n\0e\0"s));
  EXPECT_FALSE(Holds({group}, "two one"));
  group.AnsiTerms = {"", "", ""};
  EXPECT_FALSE(Holds({group}, "two o\0n\0e\0"s)) << "the third term has no form";
  PrepareNeedles(group);
  EXPECT_FALSE(Holds({group}, "two o\0n\0e\0"s));
}

TEST(SearchGroups, AFormAcrossTheEndOfAStepIsFound) {
  const std::string form = "boundary";
  const auto groups = MakeContentGroups({{u"boundary"}});
  for (size_t before = kBytesACheck - form.size() - 1; before <= kBytesACheck + 1; ++before) {
    std::string block(2 * kBytesACheck + 100, '.');
    block.replace(before, form.size(), form);
    EXPECT_TRUE(Holds(groups, block)) << before;
  }
}

TEST(SearchGroups, NothingIsFoundOnceTheSearchIsStale) {
  Generation generation;
  const Ticket ticket = generation.Supersede();
  generation.Supersede();
  const std::string block = "word";
  EXPECT_FALSE(
      SearchGroupsInBytes(block.data(), block.data() + 4, MakeContentGroups({{u"word"}}), ticket));
}

TEST(SearchGroups, AStaleSearchEndsWithinOneStepOfALargeBlock) {
  const std::string block(64 * kBytesACheck, '.');
  const auto groups = MakeContentGroups({{u"word"}});
  std::atomic<uint32_t> all = 0, stale = 0;
  EXPECT_FALSE(SearchGroupsInBytes(block.data(), block.data() + block.size(), groups,
                                   WorkCheck(Ticket::Unlimited(), &all)));
  EXPECT_GE(all, 64u);
  EXPECT_FALSE(SearchGroupsInBytes(block.data(), block.data() + block.size(), groups,
                                   WorkCheck(Ticket(), &stale)));
  EXPECT_EQ(stale, 1u);
}

TEST(TermsOfPieces, StayFoundForTheRestOfTheFile) {
  const auto groups = MakeContentGroups({{u"first", u"last"}, {u"never"}});
  const WorkCheck check(Ticket::Unlimited());
  TermFound found(groups);
  EXPECT_FALSE(found.Search("the first block"s, check));
  EXPECT_FALSE(found.Search("another"s, check));
  EXPECT_FALSE(found.HasWholeGroup());
  EXPECT_TRUE(found.Search("the last block"s, check));
  EXPECT_TRUE(found.HasWholeGroup());
}

TEST(TermsOfPieces, OfAGroupWithoutTermsAreNeverWhole) {
  const auto groups = MakeContentGroups({{}});
  TermFound found(groups);
  EXPECT_FALSE(found.Search("text"s, WorkCheck(Ticket::Unlimited())));
  EXPECT_FALSE(found.HasWholeGroup());
}

}  // namespace
}  // namespace quilmark
