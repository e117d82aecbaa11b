#include "shell/search/columns.h"

#include <gtest/gtest.h>

#include "shell/search/grid_in.h"

namespace quilmark {
namespace {

constexpr ColumnWidths kNarrow = {60, 280, 100, 160, 160, 300};

ColumnsInput Usual() {
  return {.clientWidth = 1'100, .clientHeight = 700, .headerTop = 90, .columns = kNarrow};
}

ColumnsInput Icons(ViewMode view) {
  ColumnsInput input = Usual();
  input.view = view;
  return input;
}

TEST(ColumnsLayout, GivesTheListWhatIsLeft) {
  const ColumnsLayout list = LayoutColumns(Usual());
  EXPECT_EQ(list.header, (Rect{0, 90, 1'100, 130}));
  EXPECT_EQ(list.rows, (Rect{0, 130, 1'088, 698}));
  EXPECT_EQ(GridIn(list).pitch, 44);
  EXPECT_EQ(list.columnsWidth, 1'060);
}

TEST(ColumnsLayout, LeavesRoomForASidebarAndAHorizontalBar) {
  ColumnsInput input = Usual();
  input.sidebarWidth = 200;
  const ColumnsLayout list = LayoutColumns(input);
  EXPECT_EQ(list.rows, (Rect{200, 130, 1'088, 688}));  // the columns are wider than 888
}

TEST(ColumnsLayout, HasNoHeaderAboveIcons) {
  const ColumnsLayout small = LayoutColumns(Icons(ViewMode::kSmallIcons));
  EXPECT_EQ(small.rows.top, 90);
  EXPECT_EQ(GridIn(small).pitch, 84);
  EXPECT_EQ(Across(GridIn(small)), 1'088 / 110);
  const ColumnsLayout large = LayoutColumns(Icons(ViewMode::kLargeIcons));
  EXPECT_EQ(GridIn(large).pitch, 112);
  EXPECT_EQ(Across(GridIn(large)), 1'088 / 150);
}

TEST(ColumnsLayout, Scales) {
  ColumnsInput input = Usual();
  input.dpi = 144;
  const ColumnsLayout list = LayoutColumns(input);
  EXPECT_EQ(GridIn(list).pitch, 66);
  EXPECT_EQ(list.rows, (Rect{0, 150, 1'082, 697}));
}

TEST(ColumnsLayout, IsTotal) {
  for (const int size : {-100, 0, 1, 50, 100'000}) {
    for (const auto view : {ViewMode::kList, ViewMode::kSmallIcons, ViewMode::kLargeIcons}) {
      const ColumnsLayout list = LayoutColumns({.view = view,
                                                .clientWidth = size,
                                                .clientHeight = size,
                                                .sidebarWidth = 200,
                                                .headerTop = 90,
                                                .columns = kNarrow});
      EXPECT_LE(list.rows.left, list.rows.right);
      EXPECT_LE(list.rows.top, list.rows.bottom);
      EXPECT_GE(Across(GridIn(list)), 1);
      EXPECT_GE(RowsToPaint(GridIn(list), 0, 10).end, 1u);
    }
  }
}

TEST(RowAt, CountsLinesFromTheOffset) {
  const RowGrid list = GridIn(LayoutColumns(Usual()));
  EXPECT_EQ(RowAt(list, 0, 100, {5, 130}), 0);
  EXPECT_EQ(RowAt(list, 0, 100, {5, 173}), 0);
  EXPECT_EQ(RowAt(list, 0, 100, {5, 174}), 1);
  EXPECT_EQ(RowAt(list, 43, 100, {5, 131}), 1);
  EXPECT_EQ(RowAt(list, 44'000'000, 10'000'000, {5, 130}), 1'000'000);
}

TEST(RowAt, IsNowhereOutsideTheRows) {
  const RowGrid list = GridIn(LayoutColumns(Usual()));
  EXPECT_EQ(RowAt(list, 0, 100, {5, 129}), -1);
  EXPECT_EQ(RowAt(list, 0, 100, {1'088, 200}), -1);
  EXPECT_EQ(RowAt(list, 0, 100, {-1, 200}), -1);
  EXPECT_EQ(RowAt(list, 0, 100, {5, 698}), -1);
  EXPECT_EQ(RowAt(list, 0, 2, {5, 130 + 2 * 44}), -1);
  EXPECT_EQ(RowAt(list, 0, 0, {5, 130}), -1);
}

TEST(RowAt, FindsCellsOfTheIconViews) {
  const RowGrid icons = GridIn(LayoutColumns(Icons(ViewMode::kSmallIcons)));  // 9 across
  EXPECT_EQ(RowAt(icons, 0, 100, {0, 90}), 0);
  EXPECT_EQ(RowAt(icons, 0, 100, {110, 90}), 1);
  EXPECT_EQ(RowAt(icons, 0, 100, {110, 90 + 84}), 10);
  EXPECT_EQ(RowAt(icons, 0, 100, {9 * 110 + 5, 90}), -1);  // right of the last cell
}

TEST(PlaceOfRow, AgreesWithRowAt) {
  for (const auto view : {ViewMode::kList, ViewMode::kSmallIcons, ViewMode::kLargeIcons}) {
    const RowGrid list = GridIn(LayoutColumns(Icons(view)));
    const RowSpan inView = RowsToPaint(list, 500, 10'000);
    for (uint64_t row = inView.first; row < inView.end; ++row) {
      const Rect place = PlaceOfRow(list, 500, row);
      const Point middle = {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
      if (!Holds(list.rows, middle)) continue;
      EXPECT_EQ(RowAt(list, 500, 10'000, middle), static_cast<int64_t>(row));
    }
  }
}

TEST(PlaceOfRow, HoldsForRowsFarAway) {
  const RowGrid list = GridIn(LayoutColumns(Usual()));
  EXPECT_LT(list.rows.bottom, PlaceOfRow(list, 0, 1'000'000'000).top);
  EXPECT_LT(PlaceOfRow(list, 1'000'000'000'000, 0).bottom, list.rows.top);
}

TEST(RowsToPaint, AreThoseInView) {
  const RowGrid list = GridIn(LayoutColumns(Usual()));
  const auto rows = [&list](int64_t scrollY, uint64_t count) {
    const RowSpan inView = RowsToPaint(list, scrollY, count);
    return std::pair(inView.first, inView.end);
  };
  EXPECT_EQ(rows(0, 10'000'000), std::pair(uint64_t{0}, uint64_t{14}));
  EXPECT_EQ(rows(45, 10'000'000), std::pair(uint64_t{1}, uint64_t{15}));
  EXPECT_EQ(rows(0, 5), std::pair(uint64_t{0}, uint64_t{5}));
  EXPECT_EQ(rows(44 * 100, 5), std::pair(uint64_t{5}, uint64_t{5}));
  EXPECT_EQ(rows(0, 0), std::pair(uint64_t{0}, uint64_t{0}));
}

TEST(Scrolling, StaysWithinTheRows) {
  const RowGrid list = GridIn(LayoutColumns(Usual()));
  EXPECT_EQ(ClampScroll(list, -1, 100), 0);
  EXPECT_EQ(ClampScroll(list, 1'000, 100), 1'000);
  EXPECT_EQ(ClampScroll(list, 100'000, 100), 100 * 44 - 568);
  EXPECT_EQ(ClampScroll(list, 100, 3), 0);
  EXPECT_EQ(ClampScroll(list, INT64_MAX, 10'000'000), 10'000'000LL * 44 - 568);
  const RowGrid icons = GridIn(LayoutColumns(Icons(ViewMode::kLargeIcons)));  // 7 across
  EXPECT_EQ(ScrollLimit(icons, 71), 11 * 112 - (698 - 90));
}

TEST(Scrolling, StaysWithinTheColumns) {
  ColumnsInput input = Usual();
  input.columns[kPathColumn] = 1'000;
  const RowGrid list = GridIn(LayoutColumns(input));
  EXPECT_EQ(ClampHorizontal(list, -5), 0);
  EXPECT_EQ(ClampHorizontal(list, 10'000), 1'760 - 1'088);
  EXPECT_EQ(ClampHorizontal(GridIn(LayoutColumns(Usual())), 5), 0);
  EXPECT_EQ(ClampHorizontal(GridIn(LayoutColumns(Icons(ViewMode::kSmallIcons))), 5), 0);
}

TEST(Columns, AreFoundByTheirPlace) {
  const ColumnsLayout list = LayoutColumns(Usual());
  EXPECT_EQ(ColumnLeft(list, 0, 0), 0);
  EXPECT_EQ(ColumnLeft(list, 0, 2), 340);
  EXPECT_EQ(ColumnLeft(list, 40, 2), 300);
  EXPECT_EQ(ColumnAt(list, 0, 59), 0);
  EXPECT_EQ(ColumnAt(list, 0, 60), 1);
  EXPECT_EQ(ColumnAt(list, 0, 1'060), -1);
  EXPECT_EQ(ColumnAt(list, 0, -1), -1);
  EXPECT_EQ(ColumnAt(LayoutColumns(Icons(ViewMode::kSmallIcons)), 0, 60), -1);
}

TEST(Columns, AreHeldAtTheirRightEdges) {
  const ColumnsLayout list = LayoutColumns(Usual());
  EXPECT_EQ(ColumnEdgeAt(list, 0, {60, 100}), 0);
  EXPECT_EQ(ColumnEdgeAt(list, 0, {52, 100}), 0);
  EXPECT_EQ(ColumnEdgeAt(list, 0, {68, 100}), 0);
  EXPECT_EQ(ColumnEdgeAt(list, 0, {69, 100}), -1);
  EXPECT_EQ(ColumnEdgeAt(list, 0, {60, 130}), -1);     // in the rows
  EXPECT_EQ(ColumnEdgeAt(list, 0, {1'060, 100}), -1);  // the path's own
  EXPECT_EQ(ColumnEdgeAt(list, 40, {20, 100}), 0);
}

TEST(Columns, KeepThirtyPixelsWhileDragged) {
  EXPECT_EQ(DraggedWidth(280, 340, 400), 340);
  EXPECT_EQ(DraggedWidth(280, 340, 0), 30);
}

TEST(PathColumn, TakesWhatItsTextsNeedOrWhatIsLeft) {
  const ColumnsLayout list = LayoutColumns(Usual());  // 760 beside it, 328 left
  EXPECT_EQ(FitPathColumn(list, 0, 0), 328);
  EXPECT_EQ(FitPathColumn(list, 100, 0), 328);
  EXPECT_EQ(FitPathColumn(list, 500, 0), 520);
  EXPECT_EQ(FitPathColumn(list, 100, 400), 400);  // not below what is stored
  ColumnsInput input = Usual();
  input.clientWidth = 800;
  EXPECT_EQ(FitPathColumn(LayoutColumns(input), 0, 0), 200);
}

TEST(Bars, StandWhereThereIsMoreThanFits) {
  const RowGrid list = GridIn(LayoutColumns(Usual()));
  EXPECT_FALSE(VerticalBar(list, 0, 12).has_value());
  EXPECT_TRUE(VerticalBar(list, 0, 13).has_value());
  EXPECT_FALSE(HorizontalBar(list, 0).has_value());
  ColumnsInput wide = Usual();
  wide.columns[kPathColumn] = 1'000;
  EXPECT_TRUE(HorizontalBar(GridIn(LayoutColumns(wide)), 0).has_value());
}

TEST(Bars, HaveAThumbInProportion) {
  const RowGrid list = GridIn(LayoutColumns(Usual()));  // 568 high
  const Scrollbar top = *VerticalBar(list, 0, 100);
  EXPECT_EQ(top.track, (Rect{1'088, 130, 1'098, 698}));
  EXPECT_EQ(top.thumb, (Rect{1'088, 130, 1'098, 130 + 568 * 568 / 4'400}));
  EXPECT_EQ(VerticalBar(list, 100 * 44, 100)->thumb.bottom, 698);
  const Scrollbar tiny = *VerticalBar(list, 0, 10'000'000);
  EXPECT_EQ(tiny.thumb.bottom - tiny.thumb.top, 24);
}

TEST(Bars, FollowTheCursorToBothEnds) {
  const RowGrid list = GridIn(LayoutColumns(Usual()));
  for (const uint64_t rows : {100ull, 10'000'000ull, 1'000'000'000ull}) {
    const int64_t limit = ScrollLimit(list, rows);
    const Scrollbar bar = *VerticalBar(list, 0, rows);
    EXPECT_EQ(DragToOffset(bar, Bar::kVertical, 0, limit), 0);
    EXPECT_EQ(DragToOffset(bar, Bar::kVertical, 10'000, limit), limit);
    const int64_t half = DragToOffset(bar, Bar::kVertical, (130 + 698) / 2, limit);
    EXPECT_NEAR(static_cast<double>(half), static_cast<double>(limit) / 2,
                static_cast<double>(limit) / 100);
  }
}

TEST(Bars, KeepTheThumbUnderTheCursor) {
  const RowGrid list = GridIn(LayoutColumns(Usual()));
  const int64_t limit = ScrollLimit(list, 1'000);
  for (int cursor = 150; cursor < 680; cursor += 7) {
    const int64_t offset = DragToOffset(*VerticalBar(list, 0, 1'000), Bar::kVertical, cursor, limit);
    const Rect thumb = VerticalBar(list, offset, 1'000)->thumb;
    EXPECT_NEAR((thumb.top + thumb.bottom) / 2, cursor, 2);
  }
}

TEST(TextPlace, HoldsThePathThatItsColumnWasFittedTo) {
  for (const uint32_t dpi : {96u, 120u, 144u, 192u}) {
    ColumnsInput input{
        .clientWidth = 1'100, .clientHeight = 700, .dpi = dpi, .columns = {60, 280, 100, 160, 160, 0}};
    for (const int widest : {500, 777, 2'000}) {
      input.columns[kPathColumn] = FitPathColumn(LayoutColumns(input), widest, 0);
      const ColumnsLayout layout = LayoutColumns(input);
      const int left = ColumnLeft(layout, 0, kPathColumn);
      const Rect cell = {left, 0, left + layout.columns[kPathColumn], 44};
      const Rect place = TextPlaceOf(layout, cell, kPathColumn);
      EXPECT_GE(place.right - place.left, widest) << dpi;
      EXPECT_EQ(place.left - cell.left, TextPlaceOf(layout, cell, 2).left - cell.left);
    }
  }
}

}  // namespace
}  // namespace quilmark
