#include "content/run/content_run.h"

#include <gmock/gmock.h>

#include "config/log.h"
#include "content/run/run_fixture.h"
#include "platform/background.h"

namespace quilmark {
namespace {

using testing::ElementsAre;

using ContentRunTest = RunFixture;

TEST(ContentThreads, AreAsManyAsTheMachineHasAndTheCandidatesNeed) {
  EXPECT_EQ(ContentThreadCount(0, 8, 3), 3u);
  EXPECT_EQ(ContentThreadCount(0, 8, 1'000), 8u);
  EXPECT_EQ(ContentThreadCount(0, 0, 1'000), 1u);
  EXPECT_EQ(ContentThreadCount(0, 128, 1'000), 64u);
  EXPECT_EQ(ContentThreadCount(-3, 4, 1'000), 4u);
  EXPECT_EQ(ContentThreadCount(200, 8, 1'000), 64u);
  EXPECT_EQ(ContentThreadCount(5, 8, 1'000), 5u);
  EXPECT_EQ(ContentThreadCount(5, 8, 0), 5u);
}

TEST_F(ContentRunTest, EachWorkerHasASliceOfItsOwn) {
  const auto run = MakeRun(AddTextFiles(7, "a word"));
  const auto hits = RunContentWorkers(run, 3);
  EXPECT_EQ(run->ChunkSize, 3u);
  EXPECT_EQ(run->slices[1].end, 6u);
  EXPECT_EQ(run->slices[2].end, 7u);
  EXPECT_EQ(hits->size(), 7u);
}

TEST_F(ContentRunTest, AsManyWorkersAsFilesIsOneEach) {
  const auto run = MakeRun(AddTextFiles(3, "a word"));
  EXPECT_EQ(RunContentWorkers(run, ContentThreadCount(0, 8, 3))->size(), 3u);
  EXPECT_EQ(run->ChunkSize, 1u);
}

TEST_F(ContentRunTest, EveryFileIsLookedAtOnceWhateverTheThreads) {
  const ResultSet candidates = AddTextFiles(101, "a word");
  for (const size_t threads : {1u, 2u, 7u, 64u, 101u}) {
    const auto run = MakeRun(candidates);
    auto hits = *RunContentWorkers(run, threads);
    EXPECT_EQ(run->Processed, 101u);
    std::sort(hits.begin(), hits.end(),
              [](const MatchItem& a, const MatchItem& b) { return a.index < b.index; });
    EXPECT_EQ(hits, candidates) << threads;
  }
}

TEST_F(ContentRunTest, AnExceptionCostsItsSliceAndIsLogged) {
  std::vector<std::string> logged;
  std::mutex mutex;
  SetBackgroundExceptionLog([&](const char* what) {
    const std::scoped_lock lock(mutex);
    logged.emplace_back(what);
  });
  const auto run = MakeRun(AddTextFiles(40, "a word"));
  files->onOpen = [](std::u16string_view path) {
    if (path == u"C:\\25.txt") throw std::runtime_error("broken");
  };
  const auto hits = RunContentWorkers(run, 2);
  EXPECT_EQ(hits->size(), 20u);
  EXPECT_TRUE(WaitForBackgroundJobs(60'000));
  SetBackgroundExceptionLog({});
  EXPECT_THAT(logged, ElementsAre("content_search_worker: broken"));
}

TEST_F(ContentRunTest, AStaleSearchHasNoResults) {
  const auto run = MakeRun(AddTextFiles(40, "a word"));
  SupersedeSearch();
  EXPECT_TRUE(RunContentWorkers(run, 2)->empty());
  EXPECT_EQ(files->opened, 0u);
}

}  // namespace
}  // namespace quilmark
