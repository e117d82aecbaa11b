#include "content/run/read_ahead.h"

#include <gtest/gtest.h>

#include <set>

#include "content/run/run_fixture.h"
#include "platform/background.h"
#include "support/gate.h"

namespace quilmark {
namespace {

using std::chrono::microseconds;

TEST(DiskPace, IsSlowWhereHalfOfTheLastFilesWere) {
  DiskPace pace;
  for (int i = 0; i < 7; ++i) EXPECT_FALSE(pace.IsSlow(microseconds(5'000), 100));
  EXPECT_TRUE(pace.IsSlow(microseconds(5'000), 100));
  for (int i = 0; i < 8; ++i) pace.IsSlow(microseconds(10), 100);
  EXPECT_FALSE(pace.IsSlow(microseconds(10), 100));
}

TEST(DiskPace, OfLargeFilesInMemoryIsNot) {
  DiskPace pace;
  for (int i = 0; i < 50; ++i) EXPECT_FALSE(pace.IsSlow(microseconds(10'000), 20'000'000));
}

TEST(ReadAhead, TakesTheFilesInFrontOfTheWorkerOnceEach) {
  ContentSlice slice;
  slice.next = 10;
  slice.end = 100;
  EXPECT_EQ(ClaimAhead(slice), std::nullopt) << "nobody waits";
  slice.waitsForDisk = true;
  for (size_t i = 0; i < kMostFilesAhead; ++i) EXPECT_EQ(ClaimAhead(slice), 10 + i);
  EXPECT_EQ(ClaimAhead(slice), std::nullopt) << "far enough";
  slice.next = 12;
  EXPECT_EQ(ClaimAhead(slice), 10 + kMostFilesAhead);
  slice.next = 90;
  EXPECT_EQ(ClaimAhead(slice), 90u) << "never behind the worker";
  slice.next = 99;
  EXPECT_EQ(ClaimAhead(slice), 99u);
  EXPECT_EQ(ClaimAhead(slice), std::nullopt) << "never behind the end";
}

std::mutex warmedMutex;
std::set<std::u16string> warmed;  // warmedMutex

struct ReadAheadRun : RunFixture {
  ReadAheadRun() {
    const std::scoped_lock lock(warmedMutex);
    warmed.clear();
  }
  static size_t WarmedCount() {
    const std::scoped_lock lock(warmedMutex);
    return warmed.size();
  }
};

TEST_F(ReadAheadRun, ReadsTheNextFilesOfASliceThatWaits) {
  const auto run = MakeRun(AddTextFiles(50, "a word"));
  run->warm = [](std::u16string_view path, uint64_t most) {
    EXPECT_EQ(most, kMostBytesAhead);
    const std::scoped_lock lock(warmedMutex);
    EXPECT_TRUE(warmed.emplace(path).second) << "read twice";
  };
  run->slices = std::vector<ContentSlice>(1);
  run->slices[0].next = 5;
  run->slices[0].end = 50;
  run->slices[0].waitsForDisk = true;
  WantReadAhead(run);
  EXPECT_TRUE(WaitUntil([] { return WarmedCount() == kMostFilesAhead; }));
  EndReadAhead(*run);
  EXPECT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(WarmedCount(), kMostFilesAhead);
  EXPECT_TRUE(warmed.contains(u"C:\\5.txt"));
  EXPECT_FALSE(warmed.contains(u"C:\\4.txt"));
}

TEST_F(ReadAheadRun, EndsWithTheSearchAndReadsNothingOfAFastOne) {
  const auto run = MakeRun(AddTextFiles(50, "a word"));
  run->warm = [](std::u16string_view path, uint64_t) {
    const std::scoped_lock lock(warmedMutex);
    warmed.emplace(path);
  };
  run->slices = std::vector<ContentSlice>(1);
  run->slices[0].end = 50;
  WantReadAhead(run);
  SupersedeSearch();
  EXPECT_TRUE(WaitForBackgroundJobs(60'000)) << "a stale search has no readers";
  EXPECT_EQ(WarmedCount(), 0u);
}

}  // namespace
}  // namespace quilmark
