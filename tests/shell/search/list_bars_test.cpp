// The bars of the list under a mouse that holds their thumbs.
#include <gtest/gtest.h>

#include "shell/search/grid_in.h"
#include "shell/search/list_scroll.h"
#include "shell/view/window_ids.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

constexpr int kRowsWidth = 1'088, kColumnsWidth = 1'760, kLimit = kColumnsWidth - kRowsWidth;

ColumnsLayout WiderThanTheWindow(int sidebarWidth = 0) {
  return LayoutColumns({.clientWidth = 1'100,
                        .clientHeight = 700,
                        .sidebarWidth = sidebarWidth,
                        .headerTop = 90,
                        .columns = {60, 280, 100, 160, 160, 1'000}});
}

TEST(HorizontalBar, HasAThumbInProportion) {
  const RowGrid list = GridIn(WiderThanTheWindow());
  const int thumb = kRowsWidth * kRowsWidth / kColumnsWidth;
  EXPECT_EQ(HorizontalBar(list, 0)->track, (Rect{0, 688, kRowsWidth, 698}));
  EXPECT_EQ(HorizontalBar(list, 0)->thumb, (Rect{0, 688, thumb, 698}));
  EXPECT_EQ(HorizontalBar(list, kLimit)->thumb, (Rect{kRowsWidth - thumb, 688, kRowsWidth, 698}));
}

TEST(HorizontalBar, FollowsTheCursorToBothEnds) {
  const Scrollbar bar = *HorizontalBar(GridIn(WiderThanTheWindow()), 0);
  EXPECT_EQ(DragToOffset(bar, Bar::kHorizontal, -10'000, kLimit), 0);
  EXPECT_EQ(DragToOffset(bar, Bar::kHorizontal, 10'000, kLimit), kLimit);
  EXPECT_NEAR(static_cast<double>(DragToOffset(bar, Bar::kHorizontal, kRowsWidth / 2, kLimit)),
              kLimit / 2.0, 2);
}

TEST(HorizontalBar, KeepsTheThumbUnderTheCursor) {
  for (const int sidebar : {0, 200}) {
    const RowGrid list = GridIn(WiderThanTheWindow(sidebar));
    const int limit = kLimit + sidebar;
    // The whole way of the thumb's middle.
    const Rect first = HorizontalBar(list, 0)->thumb, last = HorizontalBar(list, limit)->thumb;
    const int from = (first.left + first.right) / 2, to = (last.left + last.right) / 2;
    ASSERT_LT(from, to);
    for (int cursor = from; cursor <= to; cursor += 7) {
      const int64_t offset = DragToOffset(*HorizontalBar(list, 0), Bar::kHorizontal, cursor, limit);
      const Rect thumb = HorizontalBar(list, static_cast<int>(offset))->thumb;
      EXPECT_NEAR((thumb.left + thumb.right) / 2, cursor, 2) << sidebar;
    }
  }
}

TEST(HorizontalBar, TakesTheColumnsToWhereItsThumbIsHeld) {
  WindowHarness harness;
  AppState& app = harness.app;
  CurrentWindowSettings.columnWidth = WiderThanTheWindow().columns;
  PlaceList(app.search, harness.Context());
  app.search.rows.dragBar = Bar::kHorizontal;
  harness.Carry(MoveThumb(app.search, harness.Context(10'000), {kRowsWidth / 2, 690}));
  EXPECT_NEAR(app.search.rows.scrollX, kLimit / 2, 2);
  EXPECT_EQ(app.search.rows.scrollY, 0);
  EXPECT_TRUE(harness.window.timers.contains(kTimerRepaint));
  harness.Carry(MoveThumb(app.search, harness.Context(10'001), {-5, 690}));
  EXPECT_EQ(app.search.rows.scrollX, 0);
}

}  // namespace
}  // namespace quilmark
