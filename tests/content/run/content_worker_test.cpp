#include <gmock/gmock.h>

#include <stdexcept>

#include "content/run/run_fixture.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

uint64_t now = 0;

// One worker over one slice, on the thread of the test, under a clock that stands still.
struct ContentWorkerTest : RunFixture {
  ContentWorkerTest() { now = 1'000; }

  std::shared_ptr<ContentRun> RunOver(ResultSet candidates) {
    auto run = MakeRun(std::move(candidates));
    run->tick = [] { return now; };
    run->publish.Generation = run->Generation;
    run->slices = std::vector<ContentSlice>(1);
    run->slices[0].end = run->TotalCount();
    return run;
  }
  void Work(const std::shared_ptr<ContentRun>& run) { RunContentWorker({.run = run}); }
};

TEST_F(ContentWorkerTest, FewerThanALotOfHitsArePublishedAtTheEndOfTheSlice) {
  const auto run = RunOver(AddTextFiles(kHitsALot - 1, "a word"));
  size_t handedOverBefore = 99;
  files->onOpen = [&](std::u16string_view path) {
    if (path == u"C:\\14.txt") handedOverBefore = run->publish.SharedResults.size();
  };
  Work(run);
  EXPECT_EQ(handedOverBefore, 0u);
  EXPECT_EQ(run->publish.SharedResults, run->Candidates);
  EXPECT_THAT(TakePosted().partials, ElementsAre(15u));
}

TEST_F(ContentWorkerTest, ALotOfHitsIsHandedOverAtOnce) {
  const auto run = RunOver(AddTextFiles(40, "a word"));
  std::vector<size_t> handedOver;
  files->onOpen = [&](std::u16string_view) { handedOver.push_back(run->publish.SharedResults.size()); };
  Work(run);
  EXPECT_EQ(handedOver[15], 0u);
  EXPECT_EQ(handedOver[16], 16u);
  EXPECT_EQ(handedOver[31], 16u);
  EXPECT_EQ(handedOver[32], 32u);
  EXPECT_EQ(run->publish.SharedResults.size(), 40u);
}

TEST_F(ContentWorkerTest, PartialResultsArePublishedMoreThan250MillisecondsApart) {
  const auto run = RunOver(AddTextFiles(16 * 4, "a word"));
  files->onOpen = [&](std::u16string_view path) {
    if (path == u"C:\\20.txt") now += 250;  // 32 hits: not yet
    if (path == u"C:\\40.txt") now += 1;    // 48 hits: now
  };
  std::vector<size_t> published;
  files->beforeRead = [&](std::u16string_view) {
    const size_t held = HeldResults()->size();
    if (published.empty() || published.back() != held) published.push_back(held);
  };
  Work(run);
  EXPECT_THAT(published, ElementsAre(0u, 16u, 48u));
  EXPECT_EQ(run->LastPublishTick, 1'251u);
}

TEST_F(ContentWorkerTest, TheEndOfASliceWaitsForTheIntervalToo) {
  const auto run = RunOver(AddTextFiles(17, "a word"));
  Work(run);
  EXPECT_THAT(TakePosted().partials, ElementsAre(16u)) << "the last hit comes with the final set";
  EXPECT_EQ(run->publish.SharedResults.size(), 17u);
}

TEST_F(ContentWorkerTest, AnEmptySetIsNotPublished) {
  const auto run = RunOver(AddTextFiles(3, "nothing"));
  Work(run);
  const Posted posted = TakePosted();
  EXPECT_THAT(posted.partials, IsEmpty());
  EXPECT_EQ(run->Processed, 3u);
}

TEST_F(ContentWorkerTest, ProgressIsToldAtMultiplesOfFiveAlone) {
  const auto run = RunOver(AddTextFiles(12, "nothing"));
  files->onOpen = [](std::u16string_view) { now += 101; };
  Work(run);
  EXPECT_THAT(TakePosted().texts, ElementsAre(u"Scanning contents... (Processed 5 / 12)",
                                              u"Scanning contents... (Processed 10 / 12)"));
}

TEST_F(ContentWorkerTest, ProgressIsToldOnceIn101Milliseconds) {
  const auto run = RunOver(AddTextFiles(25, "nothing"));
  files->onOpen = [](std::u16string_view) { now += 20; };
  Work(run);
  // After 100, 200, 300, 400 and 500 ms.
  EXPECT_THAT(TakePosted().texts, ElementsAre(u"Scanning contents... (Processed 5 / 25)",
                                              u"Scanning contents... (Processed 15 / 25)",
                                              u"Scanning contents... (Processed 25 / 25)"));
}

TEST_F(ContentWorkerTest, AMissOfAnyKindIsCounted) {
  ResultSet rows = {AddTextFile(u"hit.txt", "a word"), AddTextFile(u"miss.txt", ""),
                    MatchItem{nullptr, 3}, AddTextFile(u"gone.txt", "a word")};
  files->bytes.erase(u"C:\\gone.txt");
  const auto run = RunOver(rows);
  Work(run);
  EXPECT_EQ(run->Processed, 3u) << "one of no volume is not a file";
  EXPECT_EQ(run->outcomes[static_cast<size_t>(FileMatch::kHit)], 1u);
  EXPECT_EQ(run->outcomes[static_cast<size_t>(FileMatch::kMiss)], 1u);
  EXPECT_EQ(run->outcomes[static_cast<size_t>(FileMatch::kCannotOpen)], 1u);
}

TEST_F(ContentWorkerTest, AStaleWorkerLosesWhatItHasNotHandedOver) {
  const auto run = RunOver(AddTextFiles(30, "a word"));
  files->onOpen = [&](std::u16string_view path) {
    if (path == u"C:\\20.txt") SupersedeSearch();
  };
  Work(run);
  EXPECT_EQ(run->publish.SharedResults.size(), 16u);
  EXPECT_EQ(files->opened, 21u) << "nothing is opened afterwards";
}

TEST_F(ContentWorkerTest, AStaleSearchReadsNothingMore) {
  const auto run = RunOver(AddTextFiles(3, std::string(40'000'000, '.')));
  size_t readsThen = 0;
  files->beforeRead = [&](std::u16string_view) {
    if (files->reads != 10) return;
    SupersedeSearch();
    readsThen = files->reads;
  };
  Work(run);
  ASSERT_EQ(readsThen, 10u);
  EXPECT_EQ(files->reads, readsThen);
}

TEST_F(ContentWorkerTest, AWorkerWhoseTurnIsOverStops) {
  const auto run = RunOver(AddTextFiles(5, "a word"));
  files->onOpen = [&](std::u16string_view path) {
    if (path == u"C:\\1.txt") ++run->slices[0].turn;
  };
  Work(run);
  EXPECT_EQ(run->publish.SharedResults.size(), 2u) << "what it has found still counts";
  EXPECT_EQ(run->slices[0].next, 2u);
}

TEST_F(ContentWorkerTest, NothingIsTakenOnceTheSearchHasEnded) {
  const auto run = RunOver(AddTextFiles(3, "a word"));
  run->publish.isClosed = true;
  Work(run);
  EXPECT_TRUE(run->publish.SharedResults.empty());
  EXPECT_THAT(TakePosted().partials, IsEmpty());
}

TEST_F(ContentWorkerTest, APartialPublicationOfAStaleSearchDoesNothing) {
  const auto run = RunOver(AddTextFiles(1, "a word"));
  run->publish.SharedResults = run->Candidates;
  SupersedeSearch();
  PublishPartialResults(run->publish);
  EXPECT_THAT(TakePosted().partials, IsEmpty());
  EXPECT_TRUE(HeldResults()->empty());
}

}  // namespace
}  // namespace quilmark
