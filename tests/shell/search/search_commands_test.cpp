#include "shell/search/search_commands.h"

#include <gtest/gtest.h>

#include "shell/search/search_picture.h"
#include "shell/view/commands.h"

namespace quilmark {
namespace {

class SearchCommands : public testing::Test {
 protected:
  SearchCommands() { picture.Hold(20); }

  Effects Run(uint16_t id) { return RunSearchCommand(app.search, picture.Context(), id); }
  Effects Open(Point at) { return OpenContextMenu(app.search, picture.Context(), at); }
  Point InRow(uint64_t row) const {
    const Rect place = app.search.rows.PlaceOf(row);
    return {150, (place.top + place.bottom) / 2};
  }
  const Selection& Chosen() const { return app.search.list.selection; }
  Rect Rows() const { return app.search.rows.Grid().rows; }

  SearchPicture picture;
  AppState& app = picture.app;
};

TEST_F(SearchCommands, ShowTheRowsInAnotherWay) {
  for (const auto& [id, mode] : {std::pair{kCommandViewLargeIcons, 2},
                                 std::pair{kCommandViewSmallIcons, 1}, std::pair{kCommandViewList, 0}}) {
    EXPECT_TRUE(Run(id).paintsNow);
    EXPECT_EQ(CurrentWindowSettings.viewMode, mode);
  }
}

TEST_F(SearchCommands, SortByEachColumn) {
  for (int column = 1; column <= 5; ++column) {
    EXPECT_TRUE(Run(static_cast<uint16_t>(kCommandSortByName + column - 1)).isTaken);
    EXPECT_EQ(picture.engine.sorts.back(), std::pair(column, Direction::kByClick));
  }
  EXPECT_EQ(picture.engine.sorts.size(), 5u);
}

TEST_F(SearchCommands, MoveTheTags) {
  (void)Run(kCommandSidebar);
  EXPECT_TRUE(CurrentWindowSettings.sidebarLayout);
  (void)Run(kCommandTopBar);
  EXPECT_FALSE(CurrentWindowSettings.sidebarLayout);
}

TEST_F(SearchCommands, FlipGridLinesAndInitials) {
  EXPECT_FALSE(IsEmpty(Run(kCommandGridLines).dirty));
  EXPECT_FALSE(CurrentWindowSettings.tableGridLines);
  (void)Run(kCommandInitials);
  EXPECT_FALSE(CurrentWindowSettings.initialSearchEnabled);
  EXPECT_FALSE(TheSearch().options.initials) << "of the next search";
  (void)Run(kCommandInitials);
  EXPECT_TRUE(CurrentWindowSettings.initialSearchEnabled);
  EXPECT_TRUE(TheSearch().options.initials);
}

TEST_F(SearchCommands, OfOthersAreLeft) {
  for (const uint16_t id : {kCommandAnalysis, kCommandSettings, uint16_t{0}, uint16_t{10'032}}) {
    EXPECT_FALSE(Run(id).isTaken) << id;
  }
}

TEST_F(SearchCommands, TheMenuChoosesTheRowUnderIt) {
  const Effects effects = Open(InRow(3));
  EXPECT_EQ(SelectedRows(Chosen(), 20), std::vector<uint64_t>{3});
  EXPECT_EQ(effects.focus, Focus::kWindow);
  EXPECT_EQ(effects.tip, u"");
  ASSERT_TRUE(effects.menu);
  EXPECT_EQ(effects.menu->at, InRow(3));
  EXPECT_TRUE(effects.menu->rows[0].isEnabled);
}

TEST_F(SearchCommands, TheMenuKeepsASetThatHasTheRow) {
  SelectRange(app.search.list.selection, 2);
  SelectRange(app.search.list.selection, 5);
  (void)Open(InRow(4));
  EXPECT_EQ(Chosen().rows.size(), 4u);
  EXPECT_EQ(Chosen().focusRow, 4);
  (void)Open(InRow(7));
  EXPECT_EQ(SelectedRows(Chosen(), 20), std::vector<uint64_t>{7});
}

TEST_F(SearchCommands, TheMenuBesideTheRowsIsGreyedAndChoosesNothing) {
  picture.Hold(2);
  SelectOnly(app.search.list.selection, 1);
  const Effects effects = Open({Rows().left + 20, Rows().bottom - 2});
  ASSERT_TRUE(effects.menu);
  EXPECT_FALSE(effects.menu->rows[0].isEnabled);
  EXPECT_EQ(effects.focus, Focus::kKeep);
  EXPECT_EQ(SelectedRows(Chosen(), 2), std::vector<uint64_t>{1});
}

TEST_F(SearchCommands, NothingOpensAboveTheRowsAndLeftOfThem) {
  EXPECT_FALSE(Open({Rows().left + 20, Rows().top - 1}).menu);
  EXPECT_FALSE(Open({Rows().left - 1, Rows().top + 20}).menu);
}

}  // namespace
}  // namespace quilmark
