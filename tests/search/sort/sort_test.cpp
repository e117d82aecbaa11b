#include "search/sort/sort.h"

#include <gtest/gtest.h>

#include <mutex>

#include "search/sort/sort_fixture.h"
#include "search/sort/sort_rows.h"

namespace quilmark {
namespace {

class Sort : public SortFixture {};

TEST_F(Sort, OrdersNamesIgnoringCase) {
  Hold({AddWith(u"beta", 1), AddWith(u"Alpha", 2), AddWith(u"alphabet", 3), AddWith(u"ÄRGER", 4)});
  SortBy(kColumnName);
  EXPECT_EQ(Names(), (Names16{u"Alpha", u"alphabet", u"beta", u"ÄRGER"}));
  const auto message = search.Next();
  EXPECT_EQ(message.message, WM_SEARCH_RESULTS);
  EXPECT_EQ(message.second, 1);
  EXPECT_NE(Metrics().find(u"sort col=1 type=warm total_ms="), std::u16string::npos);
}

TEST_F(Sort, TurnsAroundAtASecondClickOnAName) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 2), AddWith(u"c", 3)});
  SortBy(kColumnName);
  SortBy(kColumnName);
  EXPECT_EQ(Names(), (Names16{u"c", u"b", u"a"}));
  EXPECT_NE(Metrics().find(u"sort col=1 type=reverse total_ms="), std::u16string::npos);
}

TEST_F(Sort, TurnsAroundOnlyWhatStandsInTheColumnsOrder) {
  Hold({AddWith(u"b", 1), AddWith(u"c", 1), AddWith(u"a", 1)});
  {
    const std::scoped_lock writer(volume->indexLock);  // the first sort waits
    DoSortAsync(kColumnName, Direction::kByClick);
    DoSortAsync(kColumnName, Direction::kByClick);
  }
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(Names(), (Names16{u"c", u"b", u"a"}));
}

TEST_F(Sort, BeginsWithTheLargestSize) {
  Hold({AddWith(u"small", 1), AddWith(u"none", 0), AddWith(u"large", 900), AddWith(u"middle", 50)});
  SortBy(kColumnSize);
  EXPECT_EQ(Names(), (Names16{u"large", u"middle", u"small", u"none"}));
  SortBy(kColumnSize);  // a real sort: zero sizes at the top
  EXPECT_EQ(Names(), (Names16{u"none", u"small", u"middle", u"large"}));
  EXPECT_EQ(Metrics().find(u"type=reverse"), std::u16string::npos);
}

TEST_F(Sort, OrdersDatesFromTheOldest) {
  Hold({AddWith(u"new", 1, 30, 10), AddWith(u"old", 1, 10, 30), AddWith(u"middle", 1, 20, 20)});
  SortBy(kColumnModified);
  EXPECT_EQ(Names(), (Names16{u"old", u"middle", u"new"}));
  SortBy(kColumnCreated);
  EXPECT_EQ(Names(), (Names16{u"new", u"middle", u"old"}));
}

TEST_F(Sort, PutsFoldersFirstByDateAndAmongTheSizesByTheirTotals) {
  const uint32_t folder = AddFolder(*volume, u"folder", kRootFrnOfTests, 77);
  AddFile(*volume, u"inside", 77, 78);
  StoreAttr(*volume, 78, {.size = 100, .modified = 1, .created = 1, .valid = true});
  StoreAttr(*volume, 77, {.size = 0, .modified = 5, .created = 5, .valid = true});
  Hold({AddWith(u"large", 900), folder, AddWith(u"small", 3)});
  SortBy(kColumnSize);
  EXPECT_EQ(Names(), (Names16{u"large", u"folder", u"small"}));
  SortBy(kColumnModified);
  EXPECT_EQ(Names().front(), u"folder");
}

TEST_F(Sort, OrdersPaths) {
  AddFolder(*volume, u"b", kRootFrnOfTests, 77);
  AddFolder(*volume, u"a", kRootFrnOfTests, 78);
  const uint32_t inB = AddFile(*volume, u"1", 77), inA = AddFile(*volume, u"2", 78);
  Hold({inB, inA});
  SortBy(kColumnOfPath);
  EXPECT_EQ(Names(), (Names16{u"2", u"1"}));
}

TEST_F(Sort, DropsRecordsThatAreGone) {
  const uint32_t gone = AddWith(u"gone", 1);
  Hold({AddWith(u"b", 1), gone, AddWith(u"a", 1), 1'000'000});
  MarkDeleted(*volume, gone);
  SortBy(kColumnName);
  EXPECT_EQ(Names(), (Names16{u"a", u"b"}));
}

TEST_F(Sort, KeepsTiesInTheOrderOfTheIndex) {
  const uint32_t first = AddWith(u"same", 5), second = AddWith(u"SAME", 5);
  Hold({second, first});
  DoSortAsync(kColumnName, Direction::kKeep);
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(Names(), (Names16{u"same", u"SAME"}));
  SetSort(kColumnName, false);
  DoSortAsync(kColumnName, Direction::kKeep);
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(Names(), (Names16{u"same", u"SAME"}));
}

TEST_F(Sort, ShowsWhatIsKnownBeforeItAsksTheDisk) {
  const uint32_t cold = AddFile(*volume, u"cold");
  Hold({cold, AddWith(u"warm", 10)});
  SortBy(kColumnSize);
  const PostedMessage first = search.Next(), second = search.Next();
  EXPECT_EQ(first.second, 1);
  EXPECT_EQ(second.second, 1);
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_NE(Metrics().find(u"sort col=2 type=cold-2phase total_ms="), std::u16string::npos);
}

TEST(FetchProgress, IsShownForManyRowsOrALargeShare) {
  EXPECT_TRUE(ShowsFetchProgress(15, 100));
  EXPECT_FALSE(ShowsFetchProgress(14, 100));
  EXPECT_TRUE(ShowsFetchProgress(5'000, 1'000'000));
  EXPECT_FALSE(ShowsFetchProgress(4'999, 1'000'000));
}

TEST_F(Sort, KeepsToItselfHowFarItHasComeWithAFewRows) {
  std::vector<uint32_t> rows;
  for (int i = 0; i < 85; ++i) rows.push_back(AddWith(u"warm", i));
  for (int i = 0; i < 15; ++i) rows.push_back(AddFile(*volume, u"cold"));
  Hold(rows);
  SortBy(kColumnModified);
  while (const auto message = search.queue.Take(0)) EXPECT_EQ(message->message, WM_SEARCH_RESULTS);
  EXPECT_EQ(HeldResults()->size(), 100u);
}

TEST_F(Sort, HasOnePhaseWhereAllValuesAreKnown) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 2)});
  SortBy(kColumnSize);
  EXPECT_EQ(search.Next().message, WM_SEARCH_RESULTS);
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_NE(Metrics().find(u"sort col=2 type=warm total_ms="), std::u16string::npos);
  EXPECT_NE(Metrics().find(u" misses=0 hits=2 rows=2"), std::u16string::npos);
}

TEST_F(Sort, MirrorsTiesWhenItTurnsAround) {
  const uint32_t first = AddWith(u"same", 1), second = AddWith(u"SAME", 1);
  Hold({second, first});
  SortBy(kColumnName);
  EXPECT_EQ(Names(), (Names16{u"same", u"SAME"}));
  SortBy(kColumnName);
  EXPECT_EQ(Names(), (Names16{u"SAME", u"same"}));
}

TEST_F(Sort, PublishesNothingWhenStale) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 1)});
  RunSort({.ticket = StaleTicket(), .order = {kColumnName, true}, .rows = HeldResults()});
  EXPECT_EQ(Names(), (Names16{u"b", u"a"}));
  EXPECT_TRUE(search.IsQuiet());
}

TEST_F(Sort, IgnoresTheNumberColumn) {
  const uint64_t before = SearchNumber();
  DoSortAsync(0, Direction::kByClick);
  EXPECT_EQ(SearchNumber(), before);
}

}  // namespace
}  // namespace quilmark
