#include "shell/search/selection.h"

#include <gtest/gtest.h>

#include "shell/search/list_scroll.h"
#include "shell/search/search_places.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

using Rows = std::vector<uint64_t>;

TEST(Selection, HoldsOneRow) {
  Selection selection;
  SelectOnly(selection, 3);
  SelectOnly(selection, 5);
  EXPECT_EQ(SelectedRows(selection, 10), Rows{5});
  EXPECT_EQ(selection.focusRow, 5);
  EXPECT_EQ(selection.anchorRow, 5);
}

TEST(Selection, TakesRowsInAndOut) {
  Selection selection;
  SelectToggle(selection, 7);
  SelectToggle(selection, 2);
  EXPECT_EQ(SelectedRows(selection, 10), (Rows{2, 7}));
  SelectToggle(selection, 7);
  EXPECT_EQ(SelectedRows(selection, 10), Rows{2});
  EXPECT_EQ(selection.focusRow, 7);
  SelectToggle(selection, 2);
  EXPECT_EQ(selection.focusRow, -1);
  EXPECT_EQ(selection.anchorRow, -1);
  EXPECT_TRUE(SelectedRows(selection, 10).empty());
}

TEST(Selection, RangesFromItsAnchor) {
  Selection selection;
  SelectRange(selection, 4);
  EXPECT_EQ(SelectedRows(selection, 10), Rows{4});
  SelectRange(selection, 6);
  EXPECT_EQ(SelectedRows(selection, 10), (Rows{4, 5, 6}));
  SelectRange(selection, 2);
  EXPECT_EQ(SelectedRows(selection, 10), (Rows{2, 3, 4}));
  EXPECT_EQ(selection.focusRow, 2);
  EXPECT_EQ(selection.anchorRow, 4);
}

TEST(Selection, LeavesOutRowsThatAreGone) {
  Selection selection;
  SelectToggle(selection, 2);
  SelectToggle(selection, 9);
  EXPECT_EQ(SelectedRows(selection, 9), Rows{2});
}

TEST(Selection, FallsBackOnTheRowThatHasTheFocus) {
  Selection selection;
  selection.focusRow = 3;
  EXPECT_EQ(SelectedRows(selection, 10), Rows{3});
  EXPECT_TRUE(SelectedRows(selection, 3).empty());
}

class ListScrolling : public testing::Test {
 protected:
  ListScrolling() {
    SetDisplayCount(1'000);
    CurrentWindowSettings.columnWidth = {60, 280, 100, 160, 160, 1'000};
    PlaceList(app.search, harness.Context());
  }
  void Wheel(int delta, uint64_t nowMs) {
    harness.Carry(ScrollByWheel(app.search, harness.Context(nowMs), delta));
  }
  void Sideways(int delta, uint64_t nowMs) {
    harness.Carry(ScrollSideways(app.search, harness.Context(nowMs), delta));
  }
  void To(int64_t y, uint64_t nowMs) {
    harness.Carry(FollowScroll(app.search, harness.Context(nowMs), app.search.rows.ScrollTo(y)));
  }
  void Thumb(Point cursor, uint64_t nowMs) {
    harness.Carry(MoveThumb(app.search, harness.Context(nowMs), cursor));
  }
  int64_t Limit() { return ScrollLimit(app.search.rows.Grid(), 1'000); }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
  AppState& app = harness.app;
};

TEST_F(ListScrolling, TakesAHundredPixelsANotch) {
  Wheel(-120, 10'000);
  EXPECT_EQ(app.search.rows.scrollY, 100);
  Wheel(60, 10'001);
  EXPECT_EQ(app.search.rows.scrollY, 50);
  Wheel(1'200, 10'002);
  EXPECT_EQ(app.search.rows.scrollY, 0);
}

TEST_F(ListScrolling, ChangesNothingButTheOffsetInABurst) {
  for (int i = 0; i < 1'000; ++i) Wheel(-120, 10'000);
  // No range, no column, no repaint of its own.
  EXPECT_TRUE(window.calls.empty());
  EXPECT_EQ(app.search.rows.scrollY, Limit());
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30004, 400}, {30014, 12}}));
}

TEST_F(ListScrolling, ShowsAFrameNowAndThenWhileTheWheelTurnsOn) {
  app.search.lastScrollTick = 9'999;
  for (uint64_t i = 0; i < 1'000; ++i) Wheel(-12, 10'000 + 5 * i);
  EXPECT_EQ(window.Count("SyncBars"), 0u);
  // 5 seconds: one after 20 ms, since each event comes before the timer has fired.
  EXPECT_EQ(window.Count("InvalidateList"), 249u);
}

TEST_F(ListScrolling, BringsTheListUpToDateAtRest) {
  To(440, 10'000);
  const std::vector<std::string> calls = {"SyncBars", "Rehover", "InvalidateList"};
  EXPECT_EQ(window.calls, calls);
  To(440, 10'000);
  EXPECT_EQ(window.calls, calls);
}

TEST_F(ListScrolling, FollowsAHeldThumb) {
  app.search.rows.dragBar = Bar::kVertical;
  app.search.thumbDragging = true;
  Thumb({1'090, 100'000}, 10'000);
  EXPECT_EQ(app.search.rows.scrollY, Limit());
  EXPECT_EQ(window.Count("SyncBars"), 1u);
  app.search.rows.dragBar = Bar::kHorizontal;
  Thumb({100'000, 690}, 10'000);
  EXPECT_EQ(app.search.rows.scrollX, 1'760 - 1'088);
}

TEST_F(ListScrolling, MovesSidewaysByFortyPixelsANotch) {
  Sideways(120, 10'000);
  EXPECT_EQ(app.search.rows.scrollX, 40);
  Sideways(-240, 10'000);
  EXPECT_EQ(app.search.rows.scrollX, 0);
}

TEST_F(ListScrolling, LosesNothingOfATouchpadsSmallTurns) {
  for (int i = 0; i < 120; ++i) Wheel(-1, 10'000);
  EXPECT_EQ(app.search.rows.scrollY, 100);
  for (int i = 0; i < 12; ++i) Sideways(10, 10'000);
  EXPECT_EQ(app.search.rows.scrollX, 40);
}

TEST_F(ListScrolling, MarksNoRowAsHoveredThatMovedAway) {
  app.search.rows.hoverRow = 3;
  Wheel(-120, 10'000);
  EXPECT_EQ(app.search.rows.hoverRow, -1);
}

}  // namespace
}  // namespace quilmark
