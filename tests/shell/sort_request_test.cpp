#include "shell/sort_request.h"

#include <gtest/gtest.h>

#include <mutex>

#include "shell/window_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

TEST(RequestSort, IsRefusedWhileTheCacheIsWarmedUp) {
  WindowHarness harness;
  harness.HoldResults(2);
  const int before = SortColumn;
  harness.app.prewarmRunning = true;
  RequestSort(harness.app, harness.window, kColumnName, Direction::kByClick);
  EXPECT_EQ(harness.window.status, u"Cache prewarming in progress. Sorting is temporarily disabled.");
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(SortColumn, before);
  EXPECT_TRUE(harness.search.IsQuiet());
}

TEST(RequestSort, SortsAndHasTheListDrawnAnew) {
  WindowHarness harness;
  VolumeIndex& volume = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  const MatchItem b = {&volume, AddFile(volume, u"b")}, a = {&volume, AddFile(volume, u"a")};
  {
    const std::scoped_lock lock(ResultsLock);
    CurrentResults = std::make_shared<const ResultSet>(ResultSet{b, a});
  }
  RequestSort(harness.app, harness.window, kColumnName, Direction::kByClick);
  EXPECT_EQ(harness.window.Count("InvalidateList"), 1u);
  EXPECT_EQ(harness.window.status, u"before");
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(*HeldResults(), (ResultSet{a, b}));
}

}  // namespace
}  // namespace quilmark
