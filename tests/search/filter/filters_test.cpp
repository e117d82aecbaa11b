#include "search/filter/filters.h"

#include <gtest/gtest.h>

#include <mutex>

#include "config/attr_counters.h"
#include "search/filter/filters_fixture.h"
#include "support/dropped_messages.h"
#include "support/gate.h"
#include "support/gives.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

std::optional<SizeRange> Range(std::u16string_view text) { return ParseCustomSizeRange(text, 2); }

TEST(CustomSizeRange, HasALeastAMostOrBoth) {
  EXPECT_EQ(Range(u"10-20"), (SizeRange{10 * kMB, 20 * kMB}));
  EXPECT_EQ(Range(u"-10"), (SizeRange{-1, 10 * kMB}));
  EXPECT_EQ(Range(u"10-"), (SizeRange{10 * kMB, -1}));
  EXPECT_EQ(Range(u" 1 0 (MB) - 20 (or so) "), (SizeRange{10 * kMB, 20 * kMB}));
  EXPECT_EQ(Range(u"0.5-1.5"), (SizeRange{kMB / 2, kMB + kMB / 2}));
}

TEST(CustomSizeRange, TakesItsUnit) {
  EXPECT_EQ(ParseCustomSizeRange(u"1-2", 0), (SizeRange{1, 2}));
  EXPECT_EQ(ParseCustomSizeRange(u"1-2", 1), (SizeRange{1'024, 2'048}));
  EXPECT_EQ(ParseCustomSizeRange(u"1-2", 3), (SizeRange{1'073'741'824, 2'147'483'648}));
  EXPECT_EQ(ParseCustomSizeRange(u"1-2", 9), (SizeRange{kMB, 2 * kMB}));
}

TEST(CustomSizeRange, RefusesWhatIsNoRange) {
  for (const auto* text :
       {u"", u"  ", u"10", u"-", u"20-10", u"a-b", u"1-x", u"--5", u"nan-5", u"()-()"}) {
    EXPECT_FALSE(Range(text).has_value()) << testing::PrintToString(text);
  }
  EXPECT_EQ(Range(u"0-1e300")->most, INT64_MAX);
}

TEST(CustomSizeRange, HasAHash) {
  EXPECT_EQ(CustomSizeHash(u""), 0x811C'9DC5u);
  EXPECT_EQ(CustomSizeHash(u"a"), 0xE40C'292Cu);
}

TEST_F(Filters, KeepFilesOfACategory) {
  Add(u"a.TXT");
  Add(u"b.jpg");
  Add(u"txt");
  Add(u"c.tar.gz");
  AddDir(u"d.txt");
  EXPECT_EQ(Filter({.category = 2}), Names{u"a.TXT"});
  EXPECT_EQ(Filter({.category = 4}), Names{u"c.tar.gz"});
}

TEST_F(Filters, KeepFoldersOfTheirRow) {
  Add(u"a.dir", 1, NowFileTime());
  AddDir(u"b");
  EXPECT_EQ(Filter({.category = 1}), Names{u"b"});
  EXPECT_EQ(Filter({.category = 1, .timePreset = kToday}), Names{});
}

TEST_F(Filters, DropFoldersUnderASize) {
  Add(u"a");
  AddDir(u"b");
  EXPECT_EQ(Filter({.sizePreset = kBelow1MB}), Names{u"a"});
}

TEST_F(Filters, KnowTheBordersOfTheirSizes) {
  Add(u"below", kMB - 1);
  Add(u"one", kMB);
  Add(u"hundred", 100 * kMB);
  Add(u"above", 100 * kMB + 1);
  EXPECT_EQ(Filter({.sizePreset = kBelow1MB}), Names{u"below"});
  EXPECT_EQ(Filter({.sizePreset = k1To100MB}), (Names{u"one", u"hundred"}));
  EXPECT_EQ(Filter({.sizePreset = kAbove100MB}), Names{u"above"});
}

TEST_F(Filters, TakeACustomSizeAndNoneThatIsNone) {
  Add(u"5", 5 * kMB);
  Add(u"10", 10 * kMB);
  Add(u"11", 11 * kMB);
  EXPECT_EQ(Filter({.sizePreset = kCustomSize, .sizeText = u"-10"}), (Names{u"5", u"10"}));
  EXPECT_EQ(Filter({.sizePreset = kCustomSize, .sizeText = u"10-"}), (Names{u"10", u"11"}));
  EXPECT_EQ(Filter({.sizePreset = kCustomSize, .sizeText = u"20-10"}).size(), 3u);
}

TEST_F(Filters, KnowTodayAndTheLastDays) {
  const FileTime now = NowAndNotAtMidnight();
  Add(u"future", 1, now + kDay);
  Add(u"now", 1, now);
  Add(u"six", 1, now - 6 * kDay);
  Add(u"eight", 1, now - 8 * kDay);
  Add(u"old", 1, now - 31 * kDay);
  EXPECT_EQ(Filter({.timePreset = kToday}), (Names{u"future", u"now"}));
  EXPECT_EQ(Filter({.timePreset = k7Days}), (Names{u"future", u"now", u"six"}));
  EXPECT_EQ(Filter({.timePreset = k30Days}), (Names{u"future", u"now", u"six", u"eight"}));
}

TEST_F(Filters, TakeCustomDatesInEitherOrder) {
  Add(u"before", 1, *FileTimeOfLocal({.year = 2024, .month = 12, .day = 31, .hour = 23, .minute = 59}));
  Add(u"first", 1, *FileTimeOfLocal({.year = 2025, .month = 1, .day = 1}));
  Add(u"last", 1, *FileTimeOfLocal({.year = 2025, .month = 1, .day = 10, .hour = 23, .minute = 59}));
  Add(u"after", 1, *FileTimeOfLocal({.year = 2025, .month = 1, .day = 11}));
  const Names inside = {u"first", u"last"};
  EXPECT_EQ(Filter({.timePreset = kCustomTime, .dateFrom = 20250101, .dateTo = 20250110}), inside);
  EXPECT_EQ(Filter({.timePreset = kCustomTime, .dateFrom = 20250110, .dateTo = 20250101}), inside);
  EXPECT_EQ(Filter({.timePreset = kCustomTime, .dateFrom = 20250100, .dateTo = 20250110}).size(), 4u);
  EXPECT_EQ(Filter({.timePreset = kCustomTime, .dateFrom = 20250230, .dateTo = 20250301}).size(), 0u);
}

TEST_F(Filters, MeanTheDateThatTheListIsSortedBy) {
  const FileTime now = NowAndNotAtMidnight();
  Add(u"made today", 1, now - 90 * kDay, now);
  EXPECT_EQ(Filter({.timePreset = kToday}), Names{});
  Reorder(4);
  EXPECT_EQ(Filter({.timePreset = kToday}), Names{u"made today"});
}

TEST_F(Filters, ShowEverythingWhenTheyAreOff) {
  Add(u"a");
  AddDir(u"b");
  EXPECT_EQ(Filter({}).size(), 2u);
  EXPECT_EQ(FilteredSet(), nullptr);
}

TEST_F(Filters, AnswerARepeatedQuestionFromWhatTheyHold) {
  Add(u"a.txt");
  Add(u"b.jpg");
  Filter({.category = 2});
  const auto held = FilteredSet();
  Filter({.category = 2});
  EXPECT_EQ(FilteredSet(), held);
}

TEST_F(Filters, TestAFileThatIsAboutToBeOpenedBySizeAndTimeAlone) {
  Add(u"small.txt", 10);
  Add(u"large.txt", 2 * kMB);
  AddDir(u"folder");
  const auto passes = [this](const FilterSettings& settings, size_t row) {
    return PassesContentFilter(MakeFilterContext(settings, NowFileTime()), (*rows)[row]);
  };
  EXPECT_TRUE(passes({.category = 3, .sizePreset = kBelow1MB}, 0)) << "the category does not act";
  EXPECT_FALSE(passes({.sizePreset = kBelow1MB}, 1));
  EXPECT_TRUE(passes({.sizePreset = k1To100MB}, 1));
  EXPECT_FALSE(passes({.timePreset = kToday}, 0));
  EXPECT_TRUE(passes({}, 0));
  EXPECT_FALSE(passes({}, 2)) << "a folder is not opened";
  MarkDeleted(*volume, (*rows)[0].index);
  EXPECT_FALSE(passes({}, 0));
  EXPECT_FALSE(PassesContentFilter({}, {volume, 99})) << "past the end";
  EXPECT_FALSE(PassesContentFilter({}, {}));
}

TEST_F(Filters, FollowANewOrderOfTheResults) {
  Add(u"a.txt");
  Add(u"b.jpg");
  Add(u"c.txt");
  EXPECT_EQ(Filter({.category = 2}), (Names{u"a.txt", u"c.txt"}));
  const std::weak_ptr<const ResultSet> former = rows;
  Reorder(1);
  Hold();
  EXPECT_TRUE(former.expired()) << "the filtered set does not keep what it was made of";
  FollowNewResults(KeepFiltered::kIfThere, rows->size());
  EXPECT_EQ(DisplayCount(), 2u) << "until the job reports";
  EXPECT_EQ(Filter({.category = 2}), (Names{u"c.txt", u"a.txt"}));
}

// Which date is meant changes with the column, what is on show does not before the job is done.
TEST_F(Filters, KeepTheirRowsWhileASortGivesThemAnotherOrder) {
  const FileTime now = NowAndNotAtMidnight();
  Add(u"a.txt", 1, now, now);
  Add(u"b.txt", 1, now, now - 90 * kDay);
  Add(u"c.jpg", 1, now, now);
  for (const FilterSettings& settings :
       {FilterSettings{.category = 2}, FilterSettings{.category = 2, .timePreset = kToday}}) {
    Reorder(3);
    const size_t before = Filter(settings).size();
    EXPECT_EQ(before, 2u);
    std::unique_lock writer(volume->indexLock);  // the jobs wait
    for (const int column : {4, 3}) {
      Reorder(column);
      Hold();
      FollowNewResults(KeepFiltered::kIfThere, rows->size());
      RefreshFilteredResultsAsync(settings);
      EXPECT_EQ(DisplayCount(), 2u) << column;
      EXPECT_EQ(ShownResults()->size(), 2u) << column;
    }
    writer.unlock();
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));
    DropMessages(search.queue);
  }
}

TEST_F(Filters, SayNothingMoreOfFormerResults) {
  Add(u"a.txt");
  Hold();
  TheSearch().ActiveCategory = 2;
  {
    const std::scoped_lock writer(volume->indexLock);  // the job waits
    RefreshFilteredResultsAsync({.category = 2});
    FollowNewResults(KeepFiltered::kNo, 7);
  }
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_EQ(FilteredSet(), nullptr);
  EXPECT_EQ(DisplayCount(), 7u);
}

TEST_F(Filters, DropRecordsThatAreGone) {
  Add(u"a.txt");
  Add(u"b.txt");
  rows->push_back({volume, 1'000'000});
  MarkDeleted(*volume, rows->front().index);
  EXPECT_EQ(Filter({.category = 2}), Names{u"b.txt"});
}

TEST_F(Filters, PublishNothingForAnotherCategory) {
  Add(u"a.txt");
  Hold();
  TheSearch().ActiveCategory = 3;
  RefreshFilteredResultsAsync({.category = 2});
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_EQ(FilteredSet(), nullptr);
}

// Nothing is asked of rows about which nothing need be known.
TEST_F(Filters, AskNothingForACustomRangeThatIsNone) {
  Add(u"warm.txt", 5 * kMB);
  rows->push_back({volume, AddFile(*volume, u"cold.txt")});
  AddDir(u"d");
  const uint64_t reads = AttrCounters().diskReads;
  for (const FilterSettings& settings :
       {FilterSettings{.sizePreset = kCustomSize, .sizeText = u"20-10"},
        FilterSettings{.sizePreset = kCustomSize},
        FilterSettings{.timePreset = kCustomTime, .dateFrom = 20250100, .dateTo = 20250110}}) {
    EXPECT_EQ(Filter(settings), (Names{u"warm.txt", u"cold.txt"}));
    EXPECT_EQ(UpdateFilterCounts(settings).byCategory[0], 2u);
    EXPECT_FALSE(UpdateFilterCounts(settings).isIncomplete);
  }
  EXPECT_EQ(AttrCounters().diskReads, reads);
  EXPECT_EQ(volume->attrs.size(), 1u);
}

TEST_F(Filters, TakeTheSizeOfAScanAndNotTheDisk) {
  rows->push_back({volume, AddFile(*volume, u"small", kRootFrnOfTests, 71)});
  rows->push_back({volume, AddFile(*volume, u"large", kRootFrnOfTests, 72)});
  volume->mftSizes[71] = {.logical = 1, .allocated = 512};
  volume->mftSizes[72] = {.logical = 5 * kMB, .allocated = 5 * kMB};
  const uint64_t reads = AttrCounters().diskReads;
  EXPECT_EQ(Filter({.sizePreset = kBelow1MB}), Names{u"small"});
  EXPECT_EQ(Filter({.sizePreset = k1To100MB}), Names{u"large"});
  EXPECT_EQ(AttrCounters().diskReads, reads);
  EXPECT_TRUE(volume->attrs.empty());
}

// Q: is a folder with a file of 2,000 bytes from now.
class ColdFilters : public Filters {
 protected:
  ColdFilters() {
    folder.MakeFile("real", std::string(2'000, 'x'));
    rows->push_back({volume, AddFile(*volume, u"real", kRootFrnOfTests, kFrn)});
  }
  static constexpr uint64_t kFrn = 71;
  ScratchFolder folder;
  MappedDrive drive{u'Q', folder.Path()};
};

TEST_F(ColdFilters, AskTheDiskForASizeThatNobodyKnows) {
  const uint64_t reads = AttrCounters().diskReads;
  const FilterSettings about = {.sizePreset = kCustomSize, .sizeUnit = 0, .sizeText = u"2000-2000"};
  EXPECT_EQ(Filter(about), Names{u"real"});
  Reorder(1);
  EXPECT_EQ(Filter(about), Names{u"real"});
  EXPECT_EQ(AttrCounters().diskReads, reads + 1);
}

TEST_F(ColdFilters, AskTheDiskForADateThatIsMissing) {
  volume->mftSizes[kFrn] = {.logical = 9, .allocated = 512};
  StoreAttr(*volume, kFrn, {.size = 9, .valid = true});
  const uint64_t reads = AttrCounters().diskReads;
  EXPECT_EQ(Filter({.sizePreset = kBelow1MB}), Names{u"real"});
  EXPECT_EQ(AttrCounters().diskReads, reads);
  EXPECT_EQ(Filter({.timePreset = k7Days}), Names{u"real"});
  EXPECT_EQ(AttrCounters().diskReads, reads + 1);
  AttrEntry entry;
  ASSERT_TRUE(Gives(PeekAttr(*volume, kFrn), entry));
  EXPECT_EQ(entry.size, 2'000);
}

TEST_F(ColdFilters, PublishNothingOnceTheyAreStaleOnTheirWay) {
  rows->push_back({volume, AddFile(*volume, u"next")});
  Hold();
  const uint64_t reads = AttrCounters().diskReads;
  Gate gate(volume->attrLock, Gate::Stops::kWriters);  // the job waits with what the disk said
  RefreshFilteredResultsAsync({.timePreset = k7Days});
  ASSERT_TRUE(WaitUntil([reads] { return AttrCounters().diskReads > reads; }));
  FollowNewResults(KeepFiltered::kNo, 7);
  gate.Open();
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_EQ(AttrCounters().diskReads, reads + 1) << "the next row was not looked at";
  EXPECT_EQ(FilteredSet(), nullptr);
  EXPECT_EQ(DisplayCount(), 7u);
}

TEST_F(Filters, ForgetWhatTheyHoldWhereThereAreNoResults) {
  Add(u"a.txt");
  Filter({.category = 2});
  EXPECT_EQ(TheSearch().FilteredResults.Get().FilteredKey.category, 2);
  rows = std::make_shared<ResultSet>();
  EXPECT_EQ(Filter({.category = 2}), Names{});
  EXPECT_EQ(FilteredSet(), nullptr);
  EXPECT_EQ(TheSearch().FilteredResults.Get().FilteredKey, FilterKey());
  EXPECT_EQ(DisplayCount(), 0u);
}

}  // namespace
}  // namespace quilmark
