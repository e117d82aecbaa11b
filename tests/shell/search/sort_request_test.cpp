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
  const int before = SortColumn();
  harness.engine.runsSorts = true;
  harness.app.search.prewarmRunning = true;
  harness.Carry(RequestSort(harness.app.search, harness.Context(), kColumnName, Direction::kByClick));
  EXPECT_EQ(harness.window.status, u"Cache prewarming in progress. Sorting is temporarily disabled.");
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(SortColumn(), before);
  EXPECT_TRUE(harness.search.IsQuiet());
}

TEST(RequestSort, LeavesTheSelectionToTheSortedRows) {
  WindowHarness harness;
  VolumeIndex* const volume = AddVolume(Engine(), MakeTestVolume());
  auto rows = std::make_shared<ResultSet>();
  for (const std::u16string_view name : {u"f", u"e", u"d", u"c", u"b", u"a"}) {
    rows->push_back({volume, AddFile(*volume, name)});
  }
  HoldRows(rows);
  harness.engine.runsSorts = true;
  SelectOnly(harness.app.search.list.selection, 3);
  SelectRange(harness.app.search.list.selection, 5);
  harness.Carry(RequestSort(harness.app.search, harness.Context(), kColumnName, Direction::kByClick));
  EXPECT_EQ(SelectedRows(harness.app.search.list.selection, 6), (std::vector<uint64_t>{3, 4, 5}));
  EXPECT_EQ(harness.app.search.list.selection.focusRow, 5);
  EXPECT_EQ(harness.window.Count("InvalidateList"), 1u);
  const PostedMessage sorted = harness.search.Next();
  EXPECT_EQ(sorted.message, WM_SEARCH_RESULTS);
  harness.Carry(TakeResultMessage(harness.app.search, harness.Context(), sorted));
  EXPECT_EQ(harness.app.search.list.selection.focusRow, -1);
  EXPECT_EQ(SelectedRows(harness.app.search.list.selection, 6), std::vector<uint64_t>{});
}

}  // namespace
}  // namespace quilmark
