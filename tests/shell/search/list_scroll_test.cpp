// The list under messages of scrollbars and under a finger.
#include "shell/search/list_scroll.h"

#include <gtest/gtest.h>

#include "search/results/search_session.h"
#include "shell/search/search_places.h"
#include "shell/view/window_ids.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

constexpr uint64_t kNow = 100'000;

class ListScrollCommands : public testing::Test {
 protected:
  ListScrollCommands() {
    CurrentWindowSettings.columnWidth = {60, 280, 100, 160, 160, 440};
    app_.clientWidth = 812;
    app_.clientHeight = 582;  // ten rows of 44 in 800 x 440
    Hold(100);
  }
  ~ListScrollCommands() override { SetDisplayCount(0); }
  void Hold(uint64_t rows) {
    SetDisplayCount(rows);
    PlaceList(app_.search, harness_.Context());
  }
  int64_t Rows(ScrollCommand command, int64_t position = 0) {
    harness_.Carry(ScrollByCommand(app_.search, harness_.Context(kNow), {true, command, position}));
    return app_.search.rows.scrollY;
  }
  int64_t Columns(ScrollCommand command, int64_t position = 0) {
    harness_.Carry(ScrollByCommand(app_.search, harness_.Context(kNow), {false, command, position}));
    return app_.search.rows.scrollX;
  }

  void Pan(Point finger, bool isFirst = false) {
    harness_.Carry(PanRows(app_.search, harness_.Context(kNow), {finger, isFirst}));
  }

  WindowHarness harness_;
  AppState& app_ = harness_.app;
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
  EXPECT_EQ(app_.search.rows.scrollY, 0);
  CurrentWindowSettings.viewMode = static_cast<int>(ViewMode::kSmallIcons);
  Hold(100);
  EXPECT_EQ(Columns(ScrollCommand::kLineOn), 0) << "icons have no columns";
}

TEST_F(ListScrollCommands, KeepTheDiskOutOfItUntilTheListRests) {
  Rows(ScrollCommand::kLineOn);
  EXPECT_EQ(app_.search.lastScrollTick, kNow);
  EXPECT_TRUE(harness_.window.timers.contains(kTimerScrollSettle));
  EXPECT_EQ(harness_.window.Count("SyncBars"), 0u);
}

TEST_F(ListScrollCommands, CountAsScrollingAlsoAtTheEnd) {
  Rows(ScrollCommand::kDone);
  Columns(ScrollCommand::kLineBack);
  EXPECT_EQ(app_.search.lastScrollTick, 0u);
  Rows(ScrollCommand::kLineBack);
  EXPECT_EQ(app_.search.lastScrollTick, kNow);
}

TEST_F(ListScrollCommands, ReachEveryRowOfAListThatABarCannotCount) {
  Hold(1'000'000'000);
  const int64_t limit = ScrollLimit(app_.search.rows.Grid(), DisplayCount()),
                step = PixelsOfBarStep({440, limit});
  EXPECT_EQ(step, 32);
  EXPECT_EQ(Rows(ScrollCommand::kTo, limit / step), limit / step * step);
  EXPECT_EQ(PixelsOfBarStep({440, 1'000}), 1);
}

TEST_F(ListScrollCommands, LeaveTheRowsUnderAFinger) {
  Pan({400, 500}, true);
  EXPECT_EQ(app_.search.lastScrollTick, 0u) << "nothing has moved yet";
  EXPECT_EQ(app_.search.rows.scrollY, 0);
  Pan({390, 350});
  EXPECT_EQ(app_.search.rows.scrollY, 150);
  EXPECT_EQ(app_.search.rows.scrollX, 10);
  Pan({500, 1'000});
  EXPECT_EQ(app_.search.rows.scrollY, 0);
  EXPECT_EQ(app_.search.rows.scrollX, 0);
  Pan({100, 100}, true);  // another finger
  Pan({100, 90});
  EXPECT_EQ(app_.search.rows.scrollY, 10);
}

}  // namespace
}  // namespace quilmark
