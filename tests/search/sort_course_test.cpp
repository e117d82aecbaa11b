// What happens around and in the middle of a sort: clicks, searches, writers, the disk.
#include <atomic>
#include <thread>

#include "search/sort_fixture.h"

namespace quilmark {
namespace {

class SortCourse : public SortFixture {};

TEST_F(SortCourse, ADoubleClickEndsAsItBegan) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 1), AddWith(u"c", 1)});
  SortBy(kColumnName);
  {
    const std::scoped_lock writer(volume->indexLock);  // the first click's sort waits
    DoSortAsync(kColumnName, Direction::kByClick);
    DoSortAsync(kColumnName, Direction::kByClick);
  }
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_TRUE(SortAscending);
  EXPECT_EQ(Names(), (Names16{u"a", u"b", u"c"}));
  SortBy(kColumnName);
  EXPECT_FALSE(SortAscending);
  EXPECT_EQ(Names(), (Names16{u"c", u"b", u"a"}));
}

TEST_F(SortCourse, AnotherColumnInBetweenLosesNothing) {
  Hold({AddWith(u"b", 1, 30), AddWith(u"a", 1, 20), AddWith(u"c", 1, 10)});
  SortBy(kColumnName);
  SortBy(kColumnName);
  {
    const std::scoped_lock writer(volume->indexLock);
    DoSortAsync(kColumnModified, Direction::kByClick);
    DoSortAsync(kColumnName, Direction::kByClick);
    DoSortAsync(kColumnName, Direction::kByClick);
  }
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_FALSE(SortAscending);
  EXPECT_EQ(Names(), (Names16{u"c", u"b", u"a"}));
}

TEST_F(SortCourse, ASetMadeAnewIsNotTakenForSorted) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 1), AddWith(u"c", 1)});
  SortBy(kColumnName);
  RefreshSearchResultsAfterIndexUpdate();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(SortColumn, kColumnName);
  SortBy(kColumnName);
  EXPECT_FALSE(SortAscending);
  EXPECT_EQ(Names(), (Names16{u"c", u"b", u"a", u"."}));
}

TEST_F(SortCourse, AClickIsNotUndoneByASearchThatEnds) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 1)});
  std::atomic<bool> isDone = false;
  std::atomic<uint64_t> generation = searchGeneration.load();  // of the search
  std::thread searches([&] {
    while (!isDone) PublishResults(generation, ResultKind::kFinal, HeldResults(), false);
  });
  int lost = 0;
  for (int click = 0; click < 2'000; ++click) {
    generation = searchGeneration.load();
    DoSortAsync(kColumnName, Direction::kByClick);
    const std::scoped_lock lock(ResultsLock);
    lost += SortColumn == kColumnName ? 0 : 1;
  }
  isDone = true;
  searches.join();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(lost, 0);
}

TEST_F(SortCourse, ASearchOnItsWayPublishesNothingMore) {
  searchHooks.waitsForWriters = true;
  Hold({AddWith(u"b", 1), AddWith(u"a", 1)});
  AddWith(u"ab", 1);
  {
    const std::scoped_lock writer(volume->indexLock);  // the search waits in the middle
    DoSearchAsync(u"b", false, false);
    DoSortAsync(kColumnName, Direction::kByClick);
  }
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(search.Next().second, static_cast<int64_t>(ResultKind::kSorted));
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_EQ(SortColumn, kColumnName);
  EXPECT_EQ(Names(), (Names16{u"a", u"b"}));
}

}  // namespace
}  // namespace quilmark
