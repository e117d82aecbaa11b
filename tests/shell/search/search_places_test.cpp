#include "shell/search/search_places.h"

#include <gtest/gtest.h>

#include "shell/window_harness.h"

namespace quilmark {
namespace {

class SearchPlaces : public testing::Test {
 protected:
  WindowHarness harness;
  SearchView& view = harness.app.search;
};

TEST_F(SearchPlaces, TheListReachesFromTheBarToTheBottom) {
  view.headerTop = 120;
  EXPECT_EQ(ListAreaOf(view, harness.Context()), (Rect{0, 120, 1'100, 700}));
}

TEST_F(SearchPlaces, EachViewModeHasAStyleOfItsOwn) {
  EXPECT_EQ(ListStyleOf(ViewMode::kList).cell, 0) << "one row a line";
  EXPECT_GT(ListStyleOf(ViewMode::kSmallIcons).cell, 0);
  EXPECT_GT(ListStyleOf(ViewMode::kLargeIcons).cell, ListStyleOf(ViewMode::kSmallIcons).cell);
  CurrentWindowSettings.viewMode = 2;
  PlaceList(view, harness.Context());
  EXPECT_EQ(view.rows.Style(), ListStyleOf(ViewMode::kLargeIcons));
}

TEST_F(SearchPlaces, RowsLeaveRoomForTheSidebar) {
  PlaceList(view, harness.Context());
  const int left = view.rows.Grid().rows.left;
  CurrentWindowSettings.sidebarLayout = true;
  view.sidebarWidth = 200;
  PlaceList(view, harness.Context());
  EXPECT_EQ(view.rows.Grid().rows.left, left + 200);
}

TEST_F(SearchPlaces, AnEdgeThatIsDraggedDoesNotRunAwayFromTheMouse) {
  CurrentWindowSettings.columnWidth = {60, 280, 100, 160, 160, 1'000};
  PlaceList(view, harness.Context());
  view.rows.scrollX = 500;
  CurrentWindowSettings.columnWidth = {60, 280, 100, 160, 160, 100};
  PlaceList(view, harness.Context());
  EXPECT_EQ(view.rows.scrollX, 500) << "beyond the limit of the moment";
  harness.Carry(RelayoutList(view, harness.Context()));
  EXPECT_LT(view.rows.scrollX, 500);
}

TEST_F(SearchPlaces, TheFittedPathColumnCountsWhereItIsWiderThanTheStoredOne) {
  CurrentWindowSettings.columnWidth[kPathColumn] = 300;
  view.pathColumnWidth = 450;
  EXPECT_EQ(PlaceColumns(view, harness.Context()).columns[kPathColumn], 450);
  view.pathColumnWidth = 200;
  EXPECT_EQ(PlaceColumns(view, harness.Context()).columns[kPathColumn], 300);
}

TEST_F(SearchPlaces, TagsStandInTheBarOrInTheSidebarAndNowhereTwice) {
  view.tagCaptions = {u"All\r\n(3)", u"Folders\r\n(1)"};
  EXPECT_EQ(PlaceTagButtons(view, harness.Context()).tags.size(), 2u);
  CurrentWindowSettings.sidebarLayout = true;
  EXPECT_TRUE(PlaceTagButtons(view, harness.Context()).tags.empty());
  EXPECT_EQ(PlaceSidebar(view, harness.Context()).rows.size(), 2u);
}

}  // namespace
}  // namespace quilmark
