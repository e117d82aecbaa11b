#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

#include "search/filter/filters_fixture.h"
#include "support/gate.h"

namespace quilmark {
namespace {

TEST_F(Filters, CountASetThatIsReplacedMeanwhile) {
  for (int i = 0; i < 2'000; ++i) Add(u"a.txt");
  Hold();
  std::atomic<bool> isDone = false;
  std::thread publisher([&] {
    while (!isDone) {
      auto next = std::make_shared<ResultSet>(*rows);
      HoldRows(std::move(next));
    }
  });
  for (int i = 0; i < 50; ++i) EXPECT_EQ(UpdateFilterCounts({}).byCategory[0], 2'000u);
  isDone = true;
  publisher.join();
}

TEST_F(Filters, CountByCategory) {
  Add(u"a.txt", 5 * kMB);
  Add(u"b.jpg");
  Add(u"c");
  AddDir(u"d");
  Hold();
  using Counts = std::vector<uint64_t>;
  EXPECT_EQ(UpdateFilterCounts({}).byCategory, (Counts{4, 1, 1, 1, 0, 0, 0, 0}));
  EXPECT_EQ(UpdateFilterCounts({.sizePreset = k1To100MB}).byCategory, (Counts{1, 0, 1, 0, 0, 0, 0, 0}));
  EXPECT_FALSE(UpdateFilterCounts({.sizePreset = k1To100MB}).isIncomplete);
}

TEST_F(Filters, SayThatAVolumeThatIsWrittenToWasLeftOut) {
  for (int i = 0; i < 1'000; ++i) Add(u"a.txt");
  Hold();
  {
    const Gate writer(volume->indexLock, Gate::Stops::kAll);
    const FilterCounts counts = UpdateFilterCounts({});
    EXPECT_EQ(counts.byCategory[0], 0u);
    EXPECT_TRUE(counts.leavesOutAVolume);
    EXPECT_FALSE(counts.isIncomplete) << "attributes would change nothing";
    volume->busy = true;  // built anew: results follow of themselves
    EXPECT_FALSE(UpdateFilterCounts({}).leavesOutAVolume);
    volume->busy = false;
  }
  const FilterCounts counts = UpdateFilterCounts({});
  EXPECT_EQ(counts.byCategory[0], 1'000u);
  EXPECT_FALSE(counts.leavesOutAVolume);
}

// The window waits for the counts.
TEST_F(Filters, SayThatAVolumeWhoseAttributesAreWrittenWasLeftOut) {
  for (int i = 0; i < 1'000; ++i) Add(u"a.txt");
  Hold();
  Gate writer(volume->attrLock, Gate::Stops::kAll);
  auto counted = std::async(std::launch::async, [] { return UpdateFilterCounts({.sizePreset = 1}); });
  const bool isCounted = counted.wait_for(std::chrono::minutes(1)) == std::future_status::ready;
  writer.Open();
  EXPECT_TRUE(isCounted);
  EXPECT_TRUE(counted.get().leavesOutAVolume);
  EXPECT_FALSE(UpdateFilterCounts({.sizePreset = 1}).leavesOutAVolume);
}

TEST_F(Filters, CountWithoutTheDisk) {
  rows->push_back({volume, AddFile(*volume, u"cold.txt")});
  Hold();
  const FilterCounts counts = UpdateFilterCounts({.timePreset = kToday});
  EXPECT_EQ(counts.byCategory[0], 0u);
  EXPECT_TRUE(counts.isIncomplete);
}

}  // namespace
}  // namespace quilmark
