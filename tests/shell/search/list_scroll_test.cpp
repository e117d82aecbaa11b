// The list under messages of scrollbars and under a finger.
#include "shell/search/list_scroll.h"

#include <gtest/gtest.h>

#include "search/filtered_results.h"
#include "shell/view/window_ids.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

constexpr uint64_t kNow = 100'000;

class ListScrollCommands : public testing::Test {
 protected:
  ListScrollCommands() {
    layout_.rows = {0, 130, 800, 570};  // ten rows
    layout_.pitch = 44;
    layout_.columns = {60, 280, 100, 160, 160, 440};
    layout_.columnsWidth = 1'200;
    DisplayCount = 100;
  }
  ~ListScrollCommands() override { DisplayCount = 0; }
  int64_t Rows(ScrollCommand command, int64_t position = 0) {
    ScrollRows(app_, harness_.window, layout_, command, position, kNow);
    return app_.scrollY;
  }
  int64_t Columns(ScrollCommand command, int64_t position = 0) {
    ScrollColumns(app_, harness_.window, layout_, command, position, kNow);
    return app_.scrollX;
  }

  WindowHarness harness_;
  AppState& app_ = harness_.app;
  ListLayout layout_;
};

TEST_F(ListScrollCommands, MoveTheRowsByLinesAndPages) {
  EXPECT_EQ(Rows(ScrollCommand::kLineBack), 0);
  EXPECT_EQ(Rows(ScrollCommand::kLineOn), 44);
  EXPECT_EQ(Rows(ScrollCommand::kPageOn), 44 + 9 * 44);
  EXPECT_EQ(Rows(ScrollCommand::kPageBack), 44);
  EXPECT_EQ(Rows(ScrollCommand::kEnd), 90 * 44);
  EXPECT_EQ(Rows(ScrollCommand::kLineOn), 90 * 44);
  EXPECT_EQ(Rows(ScrollCommand::kTo, 1'000), 1'000);
  EXPECT_EQ(Rows(ScrollCommand::kTrackTo, 100'000), 90 * 44);
  EXPECT_EQ(Rows(ScrollCommand::kBegin), 0);
  EXPECT_EQ(Rows(ScrollCommand::kDone), 0);
  EXPECT_EQ(Rows(static_cast<ScrollCommand>(77)), 0);
}

TEST_F(ListScrollCommands, MoveTheColumns) {
  EXPECT_EQ(Columns(ScrollCommand::kLineOn), 40);
  EXPECT_EQ(Columns(ScrollCommand::kLineBack), 0);
  EXPECT_EQ(Columns(ScrollCommand::kTrackTo, 250), 250);
  EXPECT_EQ(Columns(ScrollCommand::kPageOn), 400);
  EXPECT_EQ(Columns(ScrollCommand::kBegin), 0);
  EXPECT_EQ(Columns(ScrollCommand::kEnd), 400);
  EXPECT_EQ(app_.scrollY, 0);
  layout_.view = ViewMode::kSmallIcons;
  EXPECT_EQ(Columns(ScrollCommand::kLineOn), 0) << "icons have no columns";
}

TEST_F(ListScrollCommands, KeepTheDiskOutOfItUntilTheListRests) {
  Rows(ScrollCommand::kLineOn);
  EXPECT_EQ(app_.lastScrollTick, kNow);
  EXPECT_TRUE(harness_.window.timers.contains(kTimerScrollSettle));
  EXPECT_EQ(harness_.window.Count("RelayoutList"), 0u);
}

TEST_F(ListScrollCommands, ReachEveryRowOfAListThatABarCannotCount) {
  DisplayCount = 1'000'000'000;
  const int64_t limit = ScrollLimit(layout_, DisplayCount), step = PixelsOfBarStep(limit, 440);
  EXPECT_EQ(step, 32);
  EXPECT_EQ(Rows(ScrollCommand::kTo, limit / step), limit / step * step);
  EXPECT_EQ(PixelsOfBarStep(1'000, 440), 1);
}

TEST_F(ListScrollCommands, LeaveTheRowsUnderAFinger) {
  BeginPan(app_, {400, 500});
  PanTo(app_, harness_.window, layout_, {400, 500}, kNow);
  EXPECT_EQ(app_.scrollY, 0);
  PanTo(app_, harness_.window, layout_, {390, 350}, kNow);
  EXPECT_EQ(app_.scrollY, 150);
  EXPECT_EQ(app_.scrollX, 10);
  PanTo(app_, harness_.window, layout_, {500, 1'000}, kNow);
  EXPECT_EQ(app_.scrollY, 0);
  EXPECT_EQ(app_.scrollX, 0);
  BeginPan(app_, {100, 100});  // another finger
  PanTo(app_, harness_.window, layout_, {100, 90}, kNow);
  EXPECT_EQ(app_.scrollY, 10);
}

}  // namespace
}  // namespace quilmark
