// The threads that read ahead of the workers.
#include <gtest/gtest.h>

#include <mutex>
#include <set>

#include "content/run/read_ahead.h"
#include "content/run/run_fixture.h"
#include "platform/background.h"
#include "support/gate.h"

namespace quilmark {
namespace {

std::mutex warmedMutex;
std::set<std::u16string> warmed;  // warmedMutex

struct ReadAheadConcurrency : RunFixture {
  ReadAheadConcurrency() {
    const std::scoped_lock lock(warmedMutex);
    warmed.clear();
  }
  static size_t WarmedCount() {
    const std::scoped_lock lock(warmedMutex);
    return warmed.size();
  }
};

TEST_F(ReadAheadConcurrency, ReadsTheNextFilesOfASliceThatWaits) {
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

TEST_F(ReadAheadConcurrency, EndsWithTheSearchAndReadsNothingOfAFastOne) {
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
