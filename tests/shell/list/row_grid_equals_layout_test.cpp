// The grid against the layout of the search view, as long as both are there.
#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "canvas/scale.h"
#include "shell/list/row_grid.h"
#include "shell/list/scroll_steps.h"
#include "shell/search/list_input.h"
#include "shell/search/list_layout.h"
#include "shell/search/list_scroll.h"

namespace quilmark {
namespace {

RowGrid GridOf(const ListLayout& layout) {
  const bool isTable = layout.view == ViewMode::kList;
  return {.rows = layout.rows,
          .pitch = layout.pitch,
          .cellWidth = isTable ? 0 : layout.cellWidth,
          .contentWidth = isTable ? layout.columnsWidth : 0,
          .bar = layout.bar,
          .leastThumb = ScaleFor(layout.dpi, kLeastThumb)};
}

class GridAndLayout : public testing::Test {
 protected:
  int Int(int least, int most) { return static_cast<int>(Of(least, most)); }
  int64_t Of(int64_t least, int64_t most) {
    return std::uniform_int_distribution<int64_t>(least, most)(random_);
  }

  void Next() {
    constexpr uint32_t kScales[] = {96, 120, 144, 168, 192, 288};
    constexpr uint64_t kCounts[] = {0, 1, 13, 1'000, 10'000'000, 4'000'000'000};
    layout = LayoutList({.view = static_cast<ViewMode>(Int(0, 2)),
                         .clientWidth = Int(-50, 3'000),
                         .clientHeight = Int(-50, 2'000),
                         .sidebarWidth = Int(0, 1) * Int(0, 400),
                         .headerTop = Int(0, 200),
                         .dpi = kScales[Int(0, 5)],
                         .columns = {Int(30, 100), Int(30, 600), Int(30, 300), Int(30, 300),
                                     Int(30, 300), Int(30, 2'000)}});
    grid = GridOf(layout);
    count = kCounts[Int(0, 5)];
    limit = ScrollLimit(layout, count);
    scrollY = Int(0, 3) == 0 ? Of(0, 1LL << 40) : Of(0, limit);
    scrollX = Int(0, 3'000);
  }

  ListLayout layout;
  RowGrid grid;
  uint64_t count = 0;
  int64_t limit = 0, scrollY = 0;
  int scrollX = 0;

 private:
  std::mt19937 random_{7};
};

void ExpectSame(const std::optional<Scrollbar>& one, const std::optional<Scrollbar>& other) {
  ASSERT_EQ(one.has_value(), other.has_value());
  if (!one) return;
  EXPECT_EQ(one->track, other->track);
  EXPECT_EQ(one->thumb, other->thumb);
}

TEST_F(GridAndLayout, AgreeOnRows) {
  for (int i = 0; i < 20'000; ++i) {
    Next();
    ASSERT_EQ(Across(grid), layout.across);
    const Point point = {Int(layout.rows.left - 3, layout.rows.right + 3),
                         Int(layout.rows.top - 3, layout.rows.bottom + 3)};
    ASSERT_EQ(RowAt(grid, scrollY, count, point), RowAt(layout, scrollY, count, point)) << i;
    const RowsInView inView = RowsToPaint(layout, scrollY, count);
    ASSERT_EQ(RowsToPaint(grid, scrollY, count), (RowSpan{inView.first, inView.end})) << i;
    for (const uint64_t row : {inView.first, inView.end, static_cast<uint64_t>(Of(0, 4'000'000'000))}) {
      ASSERT_EQ(PlaceOfRow(grid, scrollY, row), PlaceOfRow(layout, scrollY, row)) << i << ", " << row;
    }
  }
}

TEST_F(GridAndLayout, AgreeOnOffsetsAndBars) {
  for (int i = 0; i < 20'000; ++i) {
    Next();
    SCOPED_TRACE(i);
    ASSERT_EQ(ScrollLimit(grid, count), limit);
    for (const int64_t y : {scrollY, -scrollY, INT64_MAX, INT64_MIN}) {
      ASSERT_EQ(ClampScroll(grid, y, count), ClampScroll(layout, y, count));
    }
    for (const int x : {scrollX, -scrollX, INT_MAX, INT_MIN}) {
      ASSERT_EQ(ClampHorizontal(grid, x), ClampHorizontal(layout, x));
    }
    const auto vertical = VerticalBar(layout, scrollY, count);
    ExpectSame(VerticalBar(grid, scrollY, count), vertical);
    ExpectSame(HorizontalBar(grid, scrollX), HorizontalBar(layout, scrollX));
    if (HasFatalFailure() || !vertical) continue;
    const int cursor = Int(-100, 2'000);
    ASSERT_EQ(OffsetUnder(*vertical, Bar::kVertical, cursor, limit),
              DragToOffset(*vertical, Bar::kVertical, cursor, limit));
  }
}

TEST_F(GridAndLayout, AgreeOnWheelsAndSteps) {
  WheelRest rest;
  int plain = 0;
  for (int i = 0; i < 20'000; ++i) {
    Next();
    const int64_t turned = Of(-100'000, 100'000);
    ASSERT_EQ(TakeTurn(rest, turned), TakeTurn(plain, turned)) << i;
    ASSERT_EQ(rest.part, plain);
    const int page = Height(layout.rows);
    const ScrollState state{page, limit, ClampScroll(layout, scrollY, count)};
    ASSERT_EQ(PixelsOfBarStep(state), PixelsOfBarStep(limit, page));
    const BarRange one = RangeOfBar(3, state), other = RangeOfBar(limit, page, state.offset);
    ASSERT_EQ(std::tuple(one.last, one.page, one.position),
              std::tuple(other.last, other.page, other.position));
    ASSERT_EQ(one.id, 3);
  }
}

}  // namespace
}  // namespace quilmark
