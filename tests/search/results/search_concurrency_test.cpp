// Searches against writers. Run under ThreadSanitizer as well.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <random>
#include <thread>

#include "platform/background.h"
#include "search/results/search_pipeline.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

constexpr int kRecords = 20'000;

VolumeIndex& AddLargeVolume(std::u16string_view drive) {
  auto volume = MakeTestVolume(drive);
  for (int i = 0; i < kRecords; ++i)
    AddFile(*volume, i % 2 == 0 ? u"even report.txt" : u"odd \u5317\u4eac.doc");
  return *AddVolume(Engine(), std::move(volume));
}

// One batch of edits, as a journal's block brings them.
void EditSome(VolumeIndex& volume, std::mt19937& random) {
  const std::scoped_lock lock(volume.indexLock);
  for (int i = 0; i < 200; ++i) {
    const auto index = static_cast<uint32_t>(1 + random() % (volume.records.size() - 1));
    switch (random() % 3) {
      case 0:
        AddFile(volume, RandomName(random, 20));
        break;
      case 1:
        RenameRecord(volume, index, kRootFrnOfTests, RandomName(random, 20));
        break;
      default:
        MarkDeleted(volume, index);
    }
  }
}

TEST(SearchConcurrency, SearchesRunWhileAWriterAppendsRenamesAndDeletes) {
  SearchHarness harness;
  VolumeIndex& volume = AddLargeVolume(u"C:");
  AddLargeVolume(u"D:");
  std::atomic<bool> done = false;
  std::thread writer([&] {
    std::mt19937 random(7);
    while (!done) EditSome(volume, random);
  });
  for (const char16_t* const query :
       {u"report", u"bj", u"e", u"a and b or 1", u"\"\"", u"none of them"}) {
    for (int i = 0; i < 5; ++i) {
      DoSearchAsync(query, false, false);
      ASSERT_THAT(harness.KindsUntilFinal(), testing::Contains(ResultKind::kFinal));
    }
  }
  done = true;
  writer.join();
  EXPECT_EQ(FindBrokenInvariant(volume), "");
}

TEST(SearchConcurrency, OnlyTheLatestOfManySearchesIsShown) {
  SearchHarness harness;
  AddLargeVolume(u"C:");
  AddLargeVolume(u"D:");
  for (int i = 0; i < 200; ++i) DoSearchAsync(i % 2 == 0 ? u"report" : u"odd", false, false);
  DoSearchAsync(u"even", false, false);
  harness.KindsUntilFinal();
  EXPECT_EQ(HeldResults()->size(), static_cast<size_t>(kRecords));
  EXPECT_EQ(NameOf(HeldResults()->front().volume->records[HeldResults()->front().index]),
            u"even report.txt");
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(HeldResults()->size(), static_cast<size_t>(kRecords));
  EXPECT_EQ(NameOf(HeldResults()->back().volume->records[HeldResults()->back().index]),
            u"even report.txt");
}

TEST(SearchConcurrency, EndOfTheProgramStopsScansOnTheirWay) {
  SearchHarness harness;
  AddLargeVolume(u"C:");
  for (int i = 0; i < 20; ++i) DoSearchAsync(u"e", false, false);
  ShutdownRequested = true;
  const auto atTheEnd = HeldResults();
  EXPECT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(HeldResults(), atTheEnd);
}

TEST(SearchConcurrency, RefreshAndSearchCrossEachOther) {
  SearchHarness harness;
  AddLargeVolume(u"C:");
  for (int i = 0; i < 30; ++i) {
    RefreshSearchResultsAfterIndexUpdate();
    DoSearchAsync(u"odd", false, false);
  }
  harness.KindsUntilFinal();
  EXPECT_EQ(HeldResults()->size(), static_cast<size_t>(kRecords / 2));
}

TEST(SearchConcurrency, ReadersOfASetAreNotDisturbedByTheNext) {
  SearchHarness harness;
  VolumeIndex& volume = AddLargeVolume(u"C:");
  std::atomic<bool> done = false;
  bool isDisturbed = false;
  std::thread reader([&] {
    while (!done) {
      const auto results = HeldResults();
      const std::vector<MatchItem> before(*results);
      for (size_t i = 0; i < results->size(); i += 997)
        BuildPathLocked(*(*results)[i].volume, (*results)[i].index);
      isDisturbed = isDisturbed || *results != before;
    }
  });
  std::mt19937 random(8);
  for (int i = 0; i < 10; ++i) {
    DoSearchAsync(i % 2 == 0 ? u"report" : u"odd", false, false);
    EditSome(volume, random);
    harness.KindsUntilFinal();
  }
  done = true;
  reader.join();
  EXPECT_FALSE(isDisturbed);
}

}  // namespace
}  // namespace quilmark
