#include "shell/list/row_grid.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace quilmark {
namespace {

constexpr int64_t kFar64 = std::numeric_limits<int64_t>::max(),
                  kBack64 = std::numeric_limits<int64_t>::min();
constexpr uint64_t kAll = std::numeric_limits<uint64_t>::max();
constexpr int kMostInt = std::numeric_limits<int>::max(), kLeastInt = std::numeric_limits<int>::min();

// Twelve rows of 44, and 40 pixels of the next.
RowGrid Table() {
  return {.rows = {0, 130, 1'088, 698}, .pitch = 44, .contentWidth = 1'060, .bar = 10, .leastThumb = 24};
}
RowGrid Icons(int cellWidth) {
  return {.rows = {0, 90, 1'088, 698}, .pitch = 84, .cellWidth = cellWidth, .bar = 10, .leastThumb = 24};
}

TEST(RowGrid, FindsRowsFromTheOffsetOn) {
  EXPECT_EQ(RowAt(Table(), 0, 100, {5, 130}), 0);
  EXPECT_EQ(RowAt(Table(), 0, 100, {5, 173}), 0);
  EXPECT_EQ(RowAt(Table(), 0, 100, {5, 174}), 1);
  EXPECT_EQ(RowAt(Table(), 43, 100, {5, 131}), 1);
  EXPECT_EQ(RowAt(Table(), 44'000'000, 10'000'000, {5, 130}), 1'000'000);
}

TEST(RowGrid, HasNoRowOutsideOfItsPlace) {
  for (const Point point : {Point{5, 129}, Point{1'088, 200}, Point{-1, 200}, Point{5, 698}}) {
    EXPECT_EQ(RowAt(Table(), 0, 100, point), -1) << point.x << "," << point.y;
  }
  EXPECT_EQ(RowAt(Table(), 0, 2, {5, 130 + 2 * 44}), -1);
  EXPECT_EQ(RowAt(Table(), 0, 0, {5, 130}), -1);
  EXPECT_EQ(RowAt(Table(), -44, 100, {5, 140}), -1) << "above the first";
  EXPECT_EQ(RowAt(Table(), -10, 100, {5, 135}), -1);
}

TEST(RowGrid, FindsIconsByTheirCells) {
  const RowGrid icons = Icons(110);
  EXPECT_EQ(Across(icons), 9);
  EXPECT_EQ(RowAt(icons, 0, 100, {0, 90}), 0);
  EXPECT_EQ(RowAt(icons, 0, 100, {110, 90}), 1);
  EXPECT_EQ(RowAt(icons, 0, 100, {110, 90 + 84}), 10);
  EXPECT_EQ(RowAt(icons, 0, 100, {9 * 110, 90}), -1) << "beside the last cell of a line";
  EXPECT_EQ(RowAt(icons, 84, 12, {3 * 110, 90}), -1) << "behind the last row";
  EXPECT_EQ(PlaceOfRow(icons, 0, 10), (Rect{110, 174, 220, 258}));
}

TEST(RowGrid, HasOneIconInALineThatIsTooNarrow) {
  RowGrid icons = Icons(110);
  icons.rows.right = 50;
  EXPECT_EQ(Across(icons), 1);
  EXPECT_EQ(PlaceOfRow(icons, 0, 1), (Rect{0, 174, 110, 258}));
  icons.rows.right = -50;
  EXPECT_EQ(Across(icons), 1);
}

TEST(RowGrid, PlacesRowsOneBelowTheOther) {
  EXPECT_EQ(PlaceOfRow(Table(), 0, 0), (Rect{0, 130, 1'088, 174}));
  EXPECT_EQ(PlaceOfRow(Table(), 50, 2), (Rect{0, 130 + 88 - 50, 1'088, 130 + 132 - 50}));
  EXPECT_EQ(PlaceOfRow(Table(), 440'000'000, 10'000'000).top, 130);
}

TEST(RowGrid, PaintsTheRowsInView) {
  EXPECT_EQ(RowsToPaint(Table(), 0, 10'000'000), (RowSpan{0, 14}));
  EXPECT_EQ(RowsToPaint(Table(), 45, 10'000'000), (RowSpan{1, 15}));
  EXPECT_EQ(RowsToPaint(Table(), 0, 5), (RowSpan{0, 5}));
  EXPECT_EQ(RowsToPaint(Table(), 44 * 100, 5), (RowSpan{5, 5}));
  EXPECT_EQ(RowsToPaint(Table(), 0, 0), (RowSpan{0, 0}));
  EXPECT_EQ(RowsToPaint(Icons(110), 84, 1'000), (RowSpan{9, 90}));
}

TEST(RowGrid, FindsTheRowsOfAPlaceAndNoMore) {
  const auto within = [](int top, int bottom, int64_t scrollY = 0) {
    return RowsWithin(Table(), scrollY, 100, {300, top, 310, bottom});
  };
  EXPECT_EQ(within(174, 218), (RowSpan{1, 2}));
  EXPECT_EQ(within(173, 219), (RowSpan{0, 3}));
  EXPECT_EQ(within(174, 175), (RowSpan{1, 2}));
  EXPECT_EQ(within(0, 131), (RowSpan{0, 1}));
  EXPECT_EQ(within(0, 130), (RowSpan{0, 0})) << "all above the rows";
  EXPECT_EQ(within(174, 218, 44'000), (RowSpan{100, 100}));
  EXPECT_EQ(within(130, 174, -44), (RowSpan{0, 0}));
  EXPECT_EQ(RowsWithin(Table(), 0, 100, {1'088, 0, 1'098, 700}), (RowSpan{0, 0})) << "a bar alone";
}

TEST(RowGrid, ScrollsToItsLastRowAndNoFurther) {
  EXPECT_EQ(ScrollLimit(Table(), 100), 100 * 44 - 568);
  EXPECT_EQ(ClampScroll(Table(), -1, 100), 0);
  EXPECT_EQ(ClampScroll(Table(), 1'000, 100), 1'000);
  EXPECT_EQ(ClampScroll(Table(), 100'000, 100), 100 * 44 - 568);
  EXPECT_EQ(ClampScroll(Table(), 100, 3), 0);
  EXPECT_EQ(ClampScroll(Table(), kFar64, 10'000'000), 10'000'000LL * 44 - 568);
  EXPECT_EQ(ScrollLimit(Icons(150), 71), 11 * 84 - 608);
}

TEST(RowGrid, ScrollsSidewaysOverColumnsAlone) {
  RowGrid wide = Table();
  wide.contentWidth = 1'760;
  EXPECT_EQ(ClampHorizontal(wide, -5), 0);
  EXPECT_EQ(ClampHorizontal(wide, kFar64), 1'760 - 1'088);
  EXPECT_EQ(ClampHorizontal(Table(), 5), 0);
  EXPECT_TRUE(HorizontalBar(wide, 0).has_value());
  EXPECT_FALSE(HorizontalBar(Table(), 0).has_value());
  wide.cellWidth = 110;
  EXPECT_EQ(ClampHorizontal(wide, 5), 0);
  EXPECT_FALSE(HorizontalBar(wide, 0).has_value());
}

TEST(RowGrid, HasABarWhereThereIsMoreThanFits) {
  EXPECT_FALSE(VerticalBar(Table(), 0, 12).has_value());
  EXPECT_TRUE(VerticalBar(Table(), 0, 13).has_value());
  EXPECT_EQ(VerticalBar(Table(), 0, 100)->track, (Rect{1'088, 130, 1'098, 698}));
  RowGrid wide = Table();
  wide.contentWidth = 1'760;
  EXPECT_EQ(HorizontalBar(wide, 0)->track, (Rect{0, 698, 1'088, 708}));
  RowGrid none = Table();
  none.bar = 0;
  EXPECT_FALSE(VerticalBar(none, 0, 100).has_value());
}

TEST(RowGrid, HasABarFromMoreThanItsSlackOn) {
  RowGrid grid = Table();
  grid.slack = 2;
  grid.rows.bottom = grid.rows.top + 10 * 44 - 2;
  EXPECT_FALSE(VerticalBar(grid, 0, 10).has_value());
  EXPECT_EQ(ScrollLimit(grid, 10), 2) << "what is hidden can be scrolled to all the same";
  --grid.rows.bottom;
  EXPECT_TRUE(VerticalBar(grid, 0, 10).has_value());
}

TEST(RowGrid, HasAThumbInProportionButNeverTooSmall) {
  EXPECT_EQ(VerticalBar(Table(), 0, 100)->thumb, (Rect{1'088, 130, 1'098, 130 + 568 * 568 / 4'400}));
  EXPECT_EQ(VerticalBar(Table(), 100 * 44, 100)->thumb.bottom, 698);
  EXPECT_EQ(Height(VerticalBar(Table(), 0, 10'000'000)->thumb), 24);
  RowGrid low = Table();
  low.rows.bottom = low.rows.top + 10;
  EXPECT_EQ(Height(VerticalBar(low, 0, 100)->thumb), 10) << "no longer than its track";
}

TEST(RowGrid, KeepsTheThumbUnderTheCursor) {
  for (const uint64_t rows : {100ull, 1'000ull, 10'000'000ull, 1'000'000'000ull}) {
    const int64_t limit = ScrollLimit(Table(), rows);
    const Scrollbar bar = *VerticalBar(Table(), 0, rows);
    EXPECT_EQ(OffsetUnder(bar, Bar::kVertical, kLeastInt, limit), 0);
    EXPECT_EQ(OffsetUnder(bar, Bar::kVertical, kMostInt, limit), limit);
    for (int cursor = 180; cursor < 640; cursor += 7) {
      const Rect thumb =
          VerticalBar(Table(), OffsetUnder(bar, Bar::kVertical, cursor, limit), rows)->thumb;
      EXPECT_NEAR((thumb.top + thumb.bottom) / 2, cursor, 2) << rows;
    }
  }
}

// ---- Random grids against what is plain to see.

struct Draw {
  explicit Draw(uint32_t seed) : random(seed) {}
  int64_t Of(int64_t least, int64_t most) {
    return std::uniform_int_distribution<int64_t>(least, most)(random);
  }
  int Int(int least, int most) { return static_cast<int>(Of(least, most)); }
  RowGrid Grid() {
    const int left = Int(-50, 300), top = Int(-50, 300);
    return {.rows = {left, top, left + Int(0, 700), top + Int(0, 500)},
            .pitch = Int(1, 90),
            .cellWidth = Int(0, 2) == 0 ? Int(1, 200) : 0,
            .contentWidth = Int(0, 1) * Int(0, 2'000),
            .bar = Int(1, 20),
            .leastThumb = Int(0, 60),
            .slack = Int(0, 3)};
  }
  std::mt19937 random;
};

// Row by row, as the eye would look for it.
int64_t RowSeenAt(const RowGrid& grid, int64_t scrollY, uint64_t rowCount, Point point) {
  if (!Holds(grid.rows, point)) return -1;
  for (uint64_t row = 0; row < rowCount; ++row) {
    if (Holds(PlaceOfRow(grid, scrollY, row), point)) return static_cast<int64_t>(row);
  }
  return -1;
}

TEST(RowGridProperty, ARowIsFoundWhereItIsPlaced) {
  Draw draw(1);
  for (int i = 0; i < 3'000; ++i) {
    const RowGrid grid = draw.Grid();
    const auto rows = static_cast<uint64_t>(draw.Of(0, 300));
    const int64_t scrollY = draw.Of(-100, ScrollLimit(grid, rows) + 100);
    const Point point = {draw.Int(grid.rows.left - 3, grid.rows.right + 3),
                         draw.Int(grid.rows.top - 3, grid.rows.bottom + 3)};
    ASSERT_EQ(RowAt(grid, scrollY, rows, point), RowSeenAt(grid, scrollY, rows, point)) << i;
  }
}

TEST(RowGridProperty, TheRowsOfAPlaceAreThoseThatTouchIt) {
  Draw draw(2);
  for (int i = 0; i < 3'000; ++i) {
    const RowGrid grid = draw.Grid();
    const auto rows = static_cast<uint64_t>(draw.Of(0, 300));
    const int64_t scrollY = draw.Of(-100, ScrollLimit(grid, rows) + 100);
    const int left = draw.Int(-60, 900), top = draw.Int(-60, 900);
    const Rect place = {left, top, left + draw.Int(0, 300), top + draw.Int(0, 300)};
    const RowSpan span = RowsWithin(grid, scrollY, rows, place), all = RowsToPaint(grid, scrollY, rows);
    const Rect shown = Intersection(place, grid.rows);
    for (uint64_t row = 0; row < rows; ++row) {
      const Rect one = PlaceOfRow(grid, scrollY, row);
      const bool isWithin = row >= span.first && row < span.end;
      const bool isOnLine = !IsEmpty(shown) && one.top < shown.bottom && one.bottom > shown.top;
      ASSERT_EQ(isWithin, isOnLine) << i << ", row " << row;
      if (scrollY >= 0 && isWithin) ASSERT_TRUE(row >= all.first && row < all.end) << i;
    }
  }
}

TEST(RowGridProperty, TheLastRowEndsAtTheBottomOnceItIsScrolledTo) {
  Draw draw(3);
  for (int i = 0; i < 3'000; ++i) {
    const RowGrid grid = draw.Grid();
    const auto rows = static_cast<uint64_t>(draw.Of(1, 2'000'000'000));
    const int64_t limit = ScrollLimit(grid, rows);
    const Rect last = PlaceOfRow(grid, limit, rows - 1);
    if (limit > 0) {
      ASSERT_EQ(last.bottom, grid.rows.bottom) << i;
    } else {
      ASSERT_LE(last.bottom, grid.rows.bottom) << i;
    }
  }
}

TEST(RowGridProperty, AThumbStaysOnItsTrackAndItsWayLeadsBack) {
  Draw draw(4);
  for (int i = 0; i < 3'000; ++i) {
    const RowGrid grid = draw.Grid();
    const auto rows =
        static_cast<uint64_t>(draw.Of(0, 1) == 0 ? draw.Of(0, 500) : draw.Of(0, 1LL << 50));
    const int64_t limit = ScrollLimit(grid, rows), scrollY = draw.Of(0, limit);
    const auto bar = VerticalBar(grid, scrollY, rows);
    ASSERT_EQ(bar.has_value(), limit > grid.slack && Height(grid.rows) > 0) << i;
    if (!bar) continue;
    ASSERT_EQ(Intersection(bar->thumb, bar->track), bar->thumb);
    ASSERT_GE(Height(bar->thumb), std::min(grid.leastThumb, Height(bar->track)));
    const int middle = bar->thumb.top + Height(bar->thumb) / 2;
    const int64_t back = OffsetUnder(*bar, Bar::kVertical, middle, limit);
    ASSERT_GE(back, 0);
    ASSERT_LE(back, scrollY) << "a thumb that is taken hold of never moves on by itself";
    const auto again = VerticalBar(grid, back, rows);
    ASSERT_NEAR(again->thumb.top, bar->thumb.top, 1) << i;
  }
}

constexpr int64_t kOffsets[] = {0, 1, -1, kMostInt, kLeastInt, kFar64, kBack64, 1'000'000'007};
constexpr uint64_t kCounts[] = {0, 1, 12, 10'000'000, kAll / 2 + 1, kAll};

void ExpectSpan(const RowSpan& span, uint64_t count) {
  ASSERT_LE(span.first, span.end);
  ASSERT_LE(span.end, count);
}

void ExpectBar(const std::optional<Scrollbar>& bar, Bar kind, int64_t limit) {
  if (!bar) return;
  ASSERT_EQ(Intersection(bar->thumb, bar->track), bar->thumb);
  for (const int cursor : {kLeastInt, bar->track.top, bar->track.right, kMostInt}) {
    const int64_t offset = OffsetUnder(*bar, kind, cursor, limit);
    ASSERT_EQ(std::clamp<int64_t>(offset, 0, limit), offset);
  }
}

void ExpectAnswers(const RowGrid& grid, int64_t scrollY, uint64_t count) {
  const int64_t limit = ScrollLimit(grid, count);
  ASSERT_GE(limit, 0);
  ASSERT_EQ(ClampScroll(grid, scrollY, count), std::clamp<int64_t>(scrollY, 0, limit));
  ExpectSpan(RowsToPaint(grid, scrollY, count), count);
  ExpectSpan(RowsWithin(grid, scrollY, count, {-70'000, -70'000, 130'000, 130'000}), count);
  for (const uint64_t row : {uint64_t{0}, count, count / 2, kAll}) {
    const Rect place = PlaceOfRow(grid, scrollY, row);
    ASSERT_LE(place.left, place.right);
    ASSERT_LT(place.top, place.bottom);
  }
  const int64_t row = RowAt(grid, scrollY, count, {grid.rows.left, grid.rows.top});
  ASSERT_TRUE(row == -1 || static_cast<uint64_t>(row) < count);
  ExpectBar(VerticalBar(grid, scrollY, count), Bar::kVertical, limit);
  const auto scrollX = static_cast<int>(std::clamp<int64_t>(scrollY, kLeastInt, kMostInt));
  ExpectBar(HorizontalBar(grid, scrollX), Bar::kHorizontal, HorizontalLimit(grid));
}

// Whatever it is asked, it answers with something that can be drawn and read.
TEST(RowGridProperty, IsTotal) {
  Draw draw(5);
  const auto any = [&](int least) {
    const int all[] = {least, 0, 1, 7, draw.Int(least, 60'000)};
    return all[draw.Int(0, 4)];
  };
  for (int i = 0; i < 2'000; ++i) {
    const int left = any(-60'000), top = any(-60'000);
    const RowGrid grid{.rows = {left, top, left + any(-60'000), top + any(-60'000)},
                       .pitch = any(-1'000),
                       .cellWidth = any(-1'000),
                       .contentWidth = draw.Int(0, 1) == 0 ? any(-60'000) : kMostInt,
                       .bar = any(-1'000),
                       .leastThumb = any(-1'000),
                       .slack = any(-1'000)};
    for (const uint64_t count : kCounts) {
      for (const int64_t scrollY : kOffsets) {
        ExpectAnswers(grid, scrollY, count);
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << i << ": " << count << " rows at " << scrollY;
      }
    }
  }
}

}  // namespace
}  // namespace quilmark
