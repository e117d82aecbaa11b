#include "shell/layout.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(Layout, ScalesByTheWindowsDpi) {
  EXPECT_EQ(ScaleFor(96, 38), 38);
  EXPECT_EQ(ScaleFor(144, 38), 57);
  EXPECT_EQ(ScaleFor(0, 38), 38);
}

TEST(Layout, PutsTheSearchBoxBesideTheScope) {
  const TopRowLayout row = LayoutTopRow({.clientWidth = 1'100});
  EXPECT_EQ(row.scope, (Rect{20, 16, 140, 54}));
  EXPECT_EQ(row.search, (Rect{152, 16, 1'080, 54}));
}

TEST(Layout, KeepsASearchBoxInANarrowWindow) {
  for (const int width : {300, 100, 0, -50}) {
    EXPECT_EQ(LayoutTopRow({.clientWidth = width}).search.left, 152);
    EXPECT_GE(LayoutTopRow({.clientWidth = width}).search.right, 232);
  }
}

TEST(Layout, GivesTheListWhatIsLeft) {
  const ListLayout list = LayoutList({.clientWidth = 1'100, .clientHeight = 700, .headerTop = 90});
  EXPECT_EQ(list.header, (Rect{0, 90, 1'100, 130}));
  EXPECT_EQ(list.rows, (Rect{0, 130, 1'088, 698}));
  EXPECT_EQ(list.pitch, 44);
}

TEST(Layout, NeverTurnsTheListInsideOut) {
  const ListLayout list = LayoutList({.clientWidth = 3, .clientHeight = 5, .headerTop = 90});
  EXPECT_EQ(list.rows.right, 0);
  EXPECT_EQ(list.rows.bottom, list.rows.top);
}

TEST(Layout, ScrollsWithinTheRows) {
  const ListLayout list = LayoutList({.clientWidth = 1'100, .clientHeight = 700, .headerTop = 90});
  EXPECT_EQ(ClampScroll(-1, 100, list), 0);
  EXPECT_EQ(ClampScroll(1'000, 100, list), 1'000);
  EXPECT_EQ(ClampScroll(100'000, 100, list), 100 * 44 - 568);
  EXPECT_EQ(ClampScroll(100, 3, list), 0);
  EXPECT_EQ(ClampScroll(INT64_MAX, 10'000'000, list), 10'000'000LL * 44 - 568);
}

TEST(Layout, PaintsTheRowsInViewAlone) {
  const ListLayout list = LayoutList({.clientWidth = 1'100, .clientHeight = 700, .headerTop = 90});
  const auto rows = [&list](int64_t scrollY, uint64_t count) {
    const RowsInView inView = RowsToPaint(scrollY, count, list);
    return std::pair(inView.first, inView.end);
  };
  EXPECT_EQ(rows(0, 10'000'000), std::pair(uint64_t{0}, uint64_t{14}));
  EXPECT_EQ(rows(45, 10'000'000), std::pair(uint64_t{1}, uint64_t{15}));
  EXPECT_EQ(rows(0, 5), std::pair(uint64_t{0}, uint64_t{5}));
  EXPECT_EQ(rows(44 * 100, 5), std::pair(uint64_t{5}, uint64_t{5}));
  EXPECT_EQ(rows(0, 0), std::pair(uint64_t{0}, uint64_t{0}));
}

}  // namespace
}  // namespace quilmark
