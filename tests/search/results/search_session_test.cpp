#include "search/results/search_session.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/search_harness.h"

namespace quilmark {
namespace {

class Session : public testing::Test {
 protected:
  static std::shared_ptr<const ResultSet> Rows(size_t count) {
    return std::make_shared<const ResultSet>(count, MatchItem{nullptr, 7});
  }
  static void ShowFiltered(size_t count) {
    TheSearch().FilteredResults.Change([count](FilteredRows& shown) {
      shown.rows = Rows(count);
      shown.DisplayCount = count;
      shown.FilteredKey.category = 2;
    });
  }
  SearchHarness harness;
};

TEST_F(Session, PublishesRowsWithTheirOrderAndTellsTheWindow) {
  SetSort(4, false);
  const Ticket ticket = SupersedeSearch();
  const auto rows = Rows(3);
  ASSERT_TRUE(PublishResults(ticket, ResultKind::kSorted, rows, KeepSort::kYes, {4, false}));
  const SearchResults held = TheSearch().CurrentResults.Get();
  EXPECT_EQ(held.rows, rows);
  EXPECT_EQ(held.order, (SetOrder{4, false}));
  EXPECT_EQ(CurrentSort().column, 4);
  EXPECT_FALSE(CurrentSort().ascending);
  const PostedMessage message = harness.Next();
  EXPECT_EQ(message.message, WM_SEARCH_RESULTS);
  EXPECT_EQ(message.first, ticket.Number());
  EXPECT_EQ(message.second, static_cast<int64_t>(ResultKind::kSorted));
}

TEST_F(Session, ForgetsTheSortOfRowsThatAreNotKept) {
  SetSort(4, false);
  ASSERT_TRUE(PublishResults(SupersedeSearch(), ResultKind::kFinal, Rows(1), KeepSort::kNo));
  EXPECT_EQ(CurrentSort().column, -1);
  EXPECT_EQ(TheSearch().CurrentResults.Get().order, SetOrder());
}

TEST_F(Session, DropsRowsOfSupersededWorkAndTellsNobody) {
  const Ticket stale = SupersedeSearch();
  SupersedeSearch();
  EXPECT_FALSE(PublishResults(stale, ResultKind::kFinal, Rows(5), KeepSort::kNo));
  EXPECT_TRUE(HeldResults()->empty());
  EXPECT_TRUE(harness.IsQuiet());
}

TEST_F(Session, ShowsWhatAFilterLeavesWhereOneActs) {
  HoldRows(Rows(9));
  EXPECT_EQ(ShownResults(), HeldResults());
  ShowFiltered(4);
  EXPECT_EQ(ShownResults()->size(), 4u);
  EXPECT_EQ(DisplayCount(), 4u);
}

TEST_F(Session, FollowsNewResultsAndMakesFormerFiltersStale) {
  ShowFiltered(4);
  const Ticket filter = TheSearch().FilteredResults.Latest();
  FollowNewResults(KeepFiltered::kNo, 9);
  EXPECT_EQ(FilteredSet(), nullptr);
  EXPECT_EQ(DisplayCount(), 9u);
  EXPECT_EQ(TheSearch().FilteredResults.Get().FilteredKey, FilterKey());
  EXPECT_FALSE(filter.IsCurrent());
}

TEST_F(Session, KeepsTheFilteredRowsUntilTheirOrderIsKnown) {
  ShowFiltered(4);
  SetDisplayCount(7);
  const Ticket filter = TheSearch().FilteredResults.Latest();
  FollowNewResults(KeepFiltered::kIfThere, 9);
  EXPECT_EQ(FilteredSet()->size(), 4u);
  EXPECT_EQ(DisplayCount(), 4u);
  EXPECT_TRUE(filter.IsCurrent());
  FollowNewResults(KeepFiltered::kNo, 9);
  FollowNewResults(KeepFiltered::kIfThere, 11);
  EXPECT_EQ(DisplayCount(), 11u) << "there were none to keep";
}

}  // namespace
}  // namespace quilmark
