#include "shell/search/layout.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(Layout, ScalesByTheWindowsDpi) {
  EXPECT_EQ(ScaleFor(96, 38), 38);
  EXPECT_EQ(ScaleFor(144, 38), 57);
  EXPECT_EQ(ScaleFor(0, 38), 38);
}

TEST(TopRow, EndsAtTheRightMargin) {
  const TopRowLayout row = LayoutTopRow({.clientWidth = 1'100});
  EXPECT_EQ(row.scope, (Rect{20, 16, 140, 54}));
  EXPECT_EQ(row.search, (Rect{152, 16, 796, 54}));
  EXPECT_EQ(row.sizePreset, (Rect{808, 16, 938, 54}));
  EXPECT_EQ(row.timePreset, (Rect{950, 16, 1'080, 54}));
}

TEST(TopRow, MakesRoomForCustomControls) {
  const TopRowLayout row = LayoutTopRow({.clientWidth = 1'400, .sizeCustom = true, .timeCustom = true});
  EXPECT_EQ(row.sizePreset.left, 1'400 - 260 - (78 + 3 + 78 + 12) - (260 + 3 + 12) - 12 - 20);
  EXPECT_EQ(row.sizeBox.left, row.sizePreset.left + 133);
  EXPECT_EQ(row.sizeUnit.left, row.sizePreset.left + 130 + 78 + 6);
  EXPECT_EQ(row.timePreset.left, row.sizeUnit.right + 12);
  EXPECT_EQ(row.dateFrom.left, row.timePreset.right + 3);
  EXPECT_EQ(row.dateTo.left, row.timePreset.right + 130 + 6);
  EXPECT_EQ(row.search.right, row.sizePreset.left - 12);
}

TEST(TopRow, KeepsASearchBoxInANarrowWindow) {
  for (const int width : {500, 300, 0, -50}) {
    const TopRowLayout row = LayoutTopRow({.clientWidth = width});
    EXPECT_EQ(row.search.left, 152);
    EXPECT_EQ(row.search.right, 232);
    EXPECT_EQ(row.sizePreset.left, 232);  // the presets run off the right edge
  }
}

TEST(FilterBar, PutsTagsIntoRows) {
  const FilterBarLayout bar = LayoutFilterBar({.clientWidth = 400, .tagWidths = {100, 120, 150, 90}});
  EXPECT_EQ(bar.tags,
            (std::vector<Rect>{
                {20, 74, 120, 114}, {128, 74, 248, 114}, {20, 122, 170, 162}, {178, 122, 268, 162}}));
  EXPECT_EQ(bar.headerTop, 8 + 80 + 16 + 4 + 70);
}

TEST(FilterBar, LimitsATagToTheWindow) {
  const FilterBarLayout bar = LayoutFilterBar({.clientWidth = 140, .tagWidths = {220, 72}});
  EXPECT_EQ(bar.tags, (std::vector<Rect>{{20, 74, 120, 114}, {20, 122, 92, 162}}));
}

TEST(FilterBar, HasAHeightOfItsOwnWithoutTagsAndWithASidebar) {
  EXPECT_EQ(LayoutFilterBar({.clientWidth = 1'100}).headerTop, 90);
  const FilterBarLayout sidebar =
      LayoutFilterBar({.clientWidth = 1'100, .sidebar = true, .tagWidths = {100}});
  EXPECT_EQ(sidebar.headerTop, 70);
  EXPECT_TRUE(sidebar.tags.empty());
}

TEST(FilterTag, IsAsWideAsItsTexts) {
  EXPECT_EQ(FilterTagWidth(96, 10, 10), 72);
  EXPECT_EQ(FilterTagWidth(96, 80, 30), 80 + 24 + 30 + 6);
  EXPECT_EQ(FilterTagWidth(96, 80, 0), 104);
  EXPECT_EQ(FilterTagWidth(96, 5'000, 30), 220);
  EXPECT_EQ(FilterTagWidth(192, 10, 10), 144);
}

TEST(Sidebar, ShowsTheTagsThatFit) {
  const SidebarInput input = {.clientHeight = 300, .headerTop = 70, .sidebarWidth = 200, .tags = 8};
  const SidebarLayout top = LayoutSidebar(input);
  EXPECT_EQ(top.fitting, (300 - 70) / 52);
  EXPECT_EQ(top.scrollLimit, 4);
  EXPECT_EQ(top.rows.size(), 4u);
  EXPECT_EQ(top.rows.front(), (Rect{8, 78, 185, 122})) << "beside the bar";
  EXPECT_EQ(top.rows[1].top, 130);
  SidebarInput scrolled = input;
  scrolled.scroll = 100;
  EXPECT_EQ(LayoutSidebar(scrolled).rows.size(), 4u);
}

TEST(Sidebar, NeedsNoScrollingWhereAllFit) {
  const SidebarLayout all =
      LayoutSidebar({.clientHeight = 900, .headerTop = 70, .sidebarWidth = 200, .tags = 8});
  EXPECT_EQ(all.scrollLimit, 0);
  EXPECT_EQ(all.track, Rect{});
  EXPECT_EQ(all.rows.front().right, 192);
  EXPECT_EQ(all.rows.size(), 8u);
  EXPECT_EQ(LayoutSidebar({.clientHeight = -5, .headerTop = 70, .tags = 8}).fitting, 1);
}

TEST(Sidebar, BeginsNoFurtherDownThanItsLastTagAllows) {
  const SidebarLayout sidebar = LayoutSidebar(
      {.clientHeight = 900, .headerTop = 70, .sidebarWidth = 200, .tags = 12, .scroll = 11});
  EXPECT_EQ(sidebar.scrollLimit, 0);
  EXPECT_EQ(sidebar.first, 0);
  EXPECT_EQ(sidebar.rows.size(), 12u);
}

TEST(Sidebar, HasABarWhereTagsExceedIt) {
  SidebarInput input = {.clientHeight = 300, .headerTop = 70, .sidebarWidth = 200, .tags = 40};
  for (int first = 0; first <= LayoutSidebar(input).scrollLimit; ++first) {
    input.scroll = first;
    const SidebarLayout sidebar = LayoutSidebar(input);
    EXPECT_EQ(sidebar.track, (Rect{189, 70, 199, 300}));
    EXPECT_GE(sidebar.thumb.top, 70);
    EXPECT_LE(sidebar.thumb.bottom, 300);
    EXPECT_EQ(SidebarDragTo(sidebar, (sidebar.thumb.top + sidebar.thumb.bottom) / 2), first);
  }
  EXPECT_EQ(SidebarDragTo(LayoutSidebar(input), -1'000), 0);
  EXPECT_EQ(SidebarDragTo(LayoutSidebar(input), 10'000), LayoutSidebar(input).scrollLimit);
  EXPECT_EQ(SidebarDragTo({}, 5), 0);
}

}  // namespace
}  // namespace quilmark
