// What happens around and in the middle of a sort: clicks, searches, writers, the disk.
#include <atomic>
#include <mutex>
#include <thread>

#include "config/attr_counters.h"
#include "platform/files.h"
#include "platform/format.h"
#include "search/attributes/attr_cache_file.h"
#include "search/attributes/attr_jobs.h"
#include "search/attributes/folder_sizes.h"
#include "search/sort/sort_fixture.h"
#include "search/sort/sort_rows.h"
#include "support/gate.h"
#include "support/mapped_drive.h"

namespace quilmark {
namespace {

class SortCourse : public SortFixture {
 protected:
  static bool ReadTheDisk(uint64_t before) {
    return WaitUntil([before] { return AttrCounters().diskReads > before; });
  }
};

TEST_F(SortCourse, ADoubleClickEndsAsItBegan) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 1), AddWith(u"c", 1)});
  SortBy(kColumnName);
  {
    const std::scoped_lock writer(volume->indexLock);  // the first click's sort waits
    DoSortAsync(kColumnName, Direction::kByClick);
    DoSortAsync(kColumnName, Direction::kByClick);
  }
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_TRUE(SortAscending());
  EXPECT_EQ(Names(), (Names16{u"a", u"b", u"c"}));
  SortBy(kColumnName);
  EXPECT_FALSE(SortAscending());
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
  EXPECT_FALSE(SortAscending());
  EXPECT_EQ(Names(), (Names16{u"c", u"b", u"a"}));
}

TEST_F(SortCourse, ASetMadeAnewIsNotTakenForSorted) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 1), AddWith(u"c", 1)});
  SortBy(kColumnName);
  RefreshSearchResultsAfterIndexUpdate();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(SortColumn(), kColumnName);
  SortBy(kColumnName);
  EXPECT_FALSE(SortAscending());
  EXPECT_EQ(Names(), (Names16{u"c", u"b", u"a", u"."}));
}

TEST_F(SortCourse, AClickIsNotUndoneByASearchThatEnds) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 1)});
  std::atomic<bool> isDone = false;
  Published<Ticket> ofSearch("of the search", LatestSearch());
  std::thread searches([&] {
    while (!isDone) PublishResults(ofSearch.Get(), ResultKind::kFinal, HeldResults(), KeepSort::kNo);
  });
  int lost = 0;
  for (int click = 0; click < 2'000; ++click) {
    ofSearch.Change([](Ticket& ticket) { ticket = LatestSearch(); });
    DoSortAsync(kColumnName, Direction::kByClick);
    lost += SortColumn() == kColumnName ? 0 : 1;
  }
  isDone = true;
  searches.join();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(lost, 0);
}

TEST_F(SortCourse, ASearchOnItsWayPublishesNothingMore) {
  TheSearch().options.waitsForWriters = true;
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
  EXPECT_EQ(SortColumn(), kColumnName);
  EXPECT_EQ(Names(), (Names16{u"a", u"b"}));
}

TEST_F(SortCourse, LetsGoOfTheFormerSetWhileItAsksTheDisk) {
  Hold({AddWith(u"warm", 1), AddFile(*volume, u"cold")});
  const std::weak_ptr<const ResultSet> former = HeldResults();
  const uint64_t reads = AttrCounters().diskReads;
  Gate gate(volume->attrLock, Gate::Stops::kWriters);
  DoSortAsync(kColumnSize, Direction::kByClick);
  ASSERT_TRUE(ReadTheDisk(reads));  // what is known is published by then
  EXPECT_TRUE(former.expired());
}

// R: with a file of 5,000 bytes, of which nothing is known yet.
class ColdSort : public SortCourse {
 protected:
  ColdSort() {
    folder.MakeFile("cold", std::string(5'000, 'x'));
    disk = AddVolume(Engine(), MakeTestVolume(u"R:"));
    cold = {disk, AddFile(*disk, u"cold")};
    const uint32_t small = AddWith(u"small", 10), large = AddWith(u"large", 90'000);
    HoldRows(std::make_shared<const ResultSet>(ResultSet{cold, {volume, small}, {volume, large}}));
  }
  // Starts a sort by size and waits until it has shown what is known and asks the disk.
  void SortUpTo(Gate&) {
    const uint64_t reads = AttrCounters().diskReads;
    DoSortAsync(kColumnSize, Direction::kByClick);
    ASSERT_TRUE(ReadTheDisk(reads));
    EXPECT_EQ(search.Next().second, static_cast<int64_t>(ResultKind::kSorted));
    EXPECT_EQ(Names(), (Names16{u"large", u"small", u"cold"}));
  }

  ScratchFolder folder;
  MappedDrive drive{u'R', folder.Path()};
  VolumeIndex* disk = nullptr;
  MatchItem cold;
};

TEST_F(ColdSort, ShowsWhatIsKnownAndThenPutsTheRestInItsPlace) {
  Gate gate(disk->attrLock, Gate::Stops::kWriters);
  SortUpTo(gate);
  EXPECT_TRUE(search.queue.Take(0) == std::nullopt) << "before the disk has answered";
  gate.Open();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(search.Next().second, static_cast<int64_t>(ResultKind::kSorted));
  EXPECT_EQ(Names(), (Names16{u"large", u"cold", u"small"}));
  EXPECT_NE(Metrics().find(u"sort col=2 type=cold-2phase total_ms="), std::u16string::npos);
  EXPECT_NE(Metrics().find(u" misses=2 hits=2 rows=3"), std::u16string::npos);
}

TEST_F(ColdSort, PublishesNothingOnceItIsStaleWhileTheDiskIsAsked) {
  Gate gate(disk->attrLock, Gate::Stops::kWriters);
  SortUpTo(gate);
  SupersedeSearch();
  gate.Open();
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_EQ(Names(), (Names16{u"large", u"small", u"cold"}));
  EXPECT_EQ(Metrics(), u"");
}

TEST_F(ColdSort, EndsWithTheProgram) {
  Gate gate(disk->attrLock, Gate::Stops::kWriters);
  SortUpTo(gate);
  ShutdownRequested = true;
  gate.Open();
  EXPECT_TRUE(search.IsQuiet());
  ShutdownRequested = false;
  EXPECT_EQ(Names(), (Names16{u"large", u"small", u"cold"}));
}

TEST_F(ColdSort, SavesTheCache) {
  const std::u16string path = GetConfigDirectory() + u"\\attrcache.v1.bin";
  // Not at once if a test before has just done so.
  EXPECT_TRUE(WaitUntil([&] {
    RunSort({.ticket = LatestSearch(), .order = {kColumnModified, true}, .rows = HeldResults()});
    return WaitForBackgroundJobs(60'000) && IsExistingPath(path);
  }));
}

TEST_F(SortCourse, PublishesNothingOnceItIsStaleInItsLastStep) {
  const uint32_t folder = AddFolder(*volume, u"folder", kRootFrnOfTests, 77);
  volume->folderSizesDirty = false;
  Hold({AddWith(u"b", 1), folder, AddWith(u"c", 900)});
  const uint64_t hits = AttrCounters().hits;
  Gate gate(volume->folderSizesLock, Gate::Stops::kAll);
  volume->folderSizesDirty = false;
  DoSortAsync(kColumnSize, Direction::kByClick);
  ASSERT_TRUE(WaitUntil([hits] { return AttrCounters().hits == hits + 2; }));  // nothing is missing
  SupersedeSearch();
  gate.Open();
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_EQ(Names(), (Names16{u"b", u"folder", u"c"}));
  EXPECT_EQ(Metrics(), u"");
}

TEST_F(SortCourse, AStaleSortByValueHasNoRows) {
  Hold({AddWith(u"b", 1), AddWith(u"a", 1)});
  for (const int column : {kColumnSize, kColumnModified}) {
    EXPECT_FALSE(SortedByValue(*HeldResults(), {column, true}, StaleTicket()));
  }
}

// Beside a job that stores sizes the totals of folders go stale all the time.
TEST_F(SortCourse, AddsUpFoldersOnceHoweverManySizesArrive) {
  VolumeIndex& first = *AddVolume(Engine(), MakeTestVolume(u"P:"));
  first.folderSizesDirty = false;
  ResultSet rows = {{&first, 0}};
  for (uint64_t frn = 70; frn < 80; ++frn) {
    rows.push_back({volume, AddFolder(*volume, u"folder", kRootFrnOfTests, frn)});
  }
  for (const int column : {kColumnSize, kColumnModified}) {
    volume->folderSizesDirty = true;
    Gate gate(first.folderSizesLock, Gate::Stops::kAll);  // at the first row, P:\ itself
    std::thread sort([&] {
      EXPECT_EQ(SortedByValue(rows, {column, true}, LatestSearch())->size(), rows.size());
    });
    EXPECT_TRUE(WaitUntil([this] { return !volume->folderSizesDirty; })) << "the sort adds up first";
    { const std::scoped_lock isDone(volume->folderSizesBuild); }
    volume->folderSizesDirty = true;  // a size has arrived
    gate.Open();
    sort.join();
    EXPECT_TRUE(volume->folderSizesDirty) << "left to the next sort, column " << column;
  }
}

TEST_F(SortCourse, DropsRowsWithoutAVolume) {
  const MatchItem row = {volume, AddWith(u"a", 1)};
  HoldRows(std::make_shared<const ResultSet>(ResultSet{{nullptr, 7}, row}));
  for (const int column : {kColumnName, kColumnSize, kColumnOfPath}) {
    SortBy(column);
    EXPECT_EQ(*HeldResults(), ResultSet{row});
  }
}

TEST_F(SortCourse, CallsASortColdThatMissedWithoutTheDisk) {
  const uint64_t frn = 500;
  Hold({AddFile(*volume, u"scanned", kRootFrnOfTests, frn), AddWith(u"small", 10)});
  InstallMftSizes(*volume, {{frn, {.logical = 4'000, .allocated = 4'096}}});
  const uint64_t reads = AttrCounters().diskReads;
  SortBy(kColumnSize);
  EXPECT_EQ(Names(), (Names16{u"scanned", u"small"}));
  EXPECT_EQ(AttrCounters().diskReads, reads);
  EXPECT_NE(search.Next().message, 0u);
  EXPECT_TRUE(search.IsQuiet()) << "one phase";
  EXPECT_NE(Metrics().find(u"sort col=2 type=cold total_ms="), std::u16string::npos);
  EXPECT_NE(Metrics().find(u" misses=1 hits=1 rows=2"), std::u16string::npos);
}

TEST_F(SortCourse, TellsHowFarTheDiskHasComeWithManyRows) {
  constexpr size_t kRows = 5'000, kStep = 800;
  constexpr uint32_t kBetweenReportsMs = 151;
  std::vector<uint32_t> rows;
  for (size_t i = 0; i < kRows; ++i) rows.push_back(AddFile(*volume, u"cold"));
  Hold(rows);
  const uint64_t reads = AttrCounters().diskReads;
  {
    Gate gate(volume->attrLock, Gate::Stops::kWriters);
    DoSortAsync(kColumnModified, Direction::kByClick);
    ASSERT_TRUE(ReadTheDisk(reads));
    // From here on the next step is told.
    ASSERT_TRUE(WaitUntil([since = TickMs()] { return TickMs() - since >= kBetweenReportsMs; }));
  }
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  size_t reports = 0, last = 0;
  while (const auto message = search.queue.Take(0)) {
    if (message->message != WM_SEARCH_STATUS) continue;
    EXPECT_EQ(message->first, SearchNumber());
    const auto text = TakeText(*message);
    ASSERT_NE(text, nullptr);
    size_t done = last + kStep;
    while (done < kRows &&
           *text != FormatText(u"Extracting properties... (Processed %zu / %zu)", done, kRows)) {
      done += kStep;
    }
    EXPECT_LT(done, kRows);
    last = done;
    ++reports;
  }
  EXPECT_GE(reports, 1u);
}

TEST_F(SortCourse, GivesRowsBackWithoutPublishingThem) {
  Hold({AddWith(u"b", 2), AddFile(*volume, u"cold"), AddWith(u"a", 1)});
  const auto held = HeldResults();
  const uint64_t number = SearchNumber();
  auto sorted = SortRows(held, {kColumnName, true}, Ticket::Unlimited());
  ASSERT_TRUE(sorted);
  EXPECT_EQ(NamesOf(sorted->rows), (Names16{u"a", u"b", u"cold"}));
  EXPECT_FALSE(sorted->hasAskedDisk);
  sorted = SortRows(held, {kColumnSize, false}, Ticket::Unlimited());
  ASSERT_TRUE(sorted);
  EXPECT_EQ(sorted->rows.size(), 3u);
  EXPECT_TRUE(sorted->hasAskedDisk);
  EXPECT_EQ(HeldResults(), held);
  EXPECT_EQ(SearchNumber(), number);
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_EQ(Metrics(), u"");
}

TEST_F(SortCourse, EndsWhereWhoeverIsShownWhatIsKnownEndsIt) {
  Hold({AddWith(u"b", 2), AddFile(*volume, u"cold")});
  const uint64_t reads = AttrCounters().diskReads;
  size_t shown = 0;
  const SortSteps steps{.showKnown =
                            [&shown](const ResultSet& known) {
                              shown = known.size();
                              return false;
                            },
                        .report = {}};
  EXPECT_FALSE(SortRows(HeldResults(), {kColumnSize, true}, Ticket::Unlimited(), steps));
  EXPECT_EQ(shown, 2u);
  EXPECT_EQ(AttrCounters().diskReads, reads);
  EXPECT_FALSE(SortRows(HeldResults(), {kColumnName, true}, StaleTicket()));
}

}  // namespace
}  // namespace quilmark
