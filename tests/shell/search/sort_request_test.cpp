#include "shell/search/sort_request.h"

#include <gtest/gtest.h>

#include "shell/search/result_messages.h"
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

TEST(RequestSort, LeavesTheSelectionToTheSortedRows) {
  WindowHarness harness;
  VolumeIndex* const volume = AddVolume(Engine(), MakeTestVolume());
  auto rows = std::make_shared<ResultSet>();
  for (const std::u16string_view name : {u"f", u"e", u"d", u"c", u"b", u"a"}) {
    rows->push_back({volume, AddFile(*volume, name)});
  }
  {
    const std::scoped_lock lock(ResultsLock);
    CurrentResults = rows;
  }
  SelectOnly(harness.app.list.selection, 3);
  SelectRange(harness.app.list.selection, 5);
  RequestSort(harness.app, harness.window, kColumnName, Direction::kByClick);
  EXPECT_EQ(SelectedRows(harness.app.list.selection, 6), (std::vector<uint64_t>{3, 4, 5}));
  EXPECT_EQ(harness.app.list.selection.focusRow, 5);
  EXPECT_EQ(harness.window.Count("InvalidateList"), 1u);
  const PostedMessage sorted = harness.search.Next();
  EXPECT_EQ(sorted.message, WM_SEARCH_RESULTS);
  TakeResultMessage(harness.app, harness.window, sorted);
  EXPECT_EQ(harness.app.list.selection.focusRow, -1);
  EXPECT_EQ(SelectedRows(harness.app.list.selection, 6), std::vector<uint64_t>{});
}

}  // namespace
}  // namespace quilmark
