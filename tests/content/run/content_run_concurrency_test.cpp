// Workers beside each other: a file that hangs, and a search that is given up while all of them read.
#include <gtest/gtest.h>

#include "content/run/run_fixture.h"
#include "platform/background.h"
#include "support/gate.h"

namespace quilmark {
namespace {

using ContentRunConcurrency = RunFixture;

TEST_F(ContentRunConcurrency, AnotherGoesOnBehindAFileThatHangs) {
  Door door;
  const auto run = MakeRun(AddTextFiles(30, "a word"));
  run->hungFileMs = 1;
  files->onOpen = [&door](std::u16string_view path) {
    if (path == u"C:\\4.txt") door.Pass();
  };
  const auto hits = RunContentWorkers(run, 2);
  EXPECT_EQ(run->hungFiles, 1u);
  EXPECT_EQ(hits->size(), 29u) << "what the worker had found before is not lost";
  door.Open();
  EXPECT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(hits->size(), 29u) << "what comes too late is dropped";
}

TEST_F(ContentRunConcurrency, AStaleSearchDoesNotWaitForAFileThatHangs) {
  Door door;
  const auto run = MakeRun(AddTextFiles(2, "a word"));
  std::atomic<bool> hangs = false;
  files->onOpen = [&](std::u16string_view path) {
    if (path != u"C:\\0.txt") return;
    hangs = true;
    door.Pass();
  };
  std::thread canceller([&hangs] {
    EXPECT_TRUE(WaitUntil([&hangs] { return hangs.load(); }));
    SupersedeSearch();
  });
  EXPECT_TRUE(RunContentWorkers(run, 1)->empty());
  canceller.join();
  door.Open();
  EXPECT_TRUE(WaitForBackgroundJobs(60'000));
}

// Each worker may have a read under way when the search becomes stale, and begins no other.
TEST_F(ContentRunConcurrency, AStaleSearchEndsWithinOneBufferOfReading) {
  constexpr size_t kThreads = 4;
  const auto run = MakeRun(AddTextFiles(kThreads, std::string(60'000'000, '.')));
  std::atomic<size_t> begun = 0;
  Door door;
  files->beforeRead = [&](std::u16string_view) {
    if (++begun < 2 * kThreads) return;
    door.Pass();
  };
  std::thread canceller([&] {
    EXPECT_TRUE(WaitUntil([&] { return begun >= 2 * kThreads; }));
    SupersedeSearch();
    door.Open();
  });
  EXPECT_TRUE(RunContentWorkers(run, kThreads)->empty());
  canceller.join();
  EXPECT_LE(files->reads, 2 * kThreads + kThreads);
}

TEST_F(ContentRunConcurrency, PartialAndFinalResultsOfManyWorkersAreWhole) {
  const ResultSet candidates = AddTextFiles(2'000, "a word");
  const auto run = MakeRun(candidates);
  static std::atomic<uint64_t> clock = 0;
  run->tick = [] { return clock += 50; };
  EXPECT_EQ(RunContentWorkers(run, 8)->size(), candidates.size());
  size_t last = 0;
  for (const size_t rows : TakePosted().partials) {
    EXPECT_LE(last, rows);
    last = rows;
  }
  EXPECT_GT(last, 0u);
}

}  // namespace
}  // namespace quilmark
