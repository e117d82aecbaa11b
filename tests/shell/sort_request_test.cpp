#include "shell/sort_request.h"

#include <gtest/gtest.h>

#include "shell/window_harness.h"

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

}  // namespace
}  // namespace quilmark
