#include "shell/search/row_press.h"

#include <gtest/gtest.h>

#include <utility>

namespace quilmark {
namespace {

using Rows = std::vector<uint64_t>;

TEST(PressRow, SelectsByTheModifiersHeld) {
  ListState list;
  EXPECT_EQ(PressRow(list, {.row = 2}), PressOutcome::kSelected);
  (void)PressRow(list, {.row = 5, .shift = true});
  EXPECT_EQ(SelectedRows(list.selection, 10), (Rows{2, 3, 4, 5}));
  (void)PressRow(list, {.row = 3, .ctrl = true});
  EXPECT_EQ(SelectedRows(list.selection, 10), (Rows{2, 4, 5}));
}

TEST(PressRow, KeepsASetSoThatItCanBeDragged) {
  ListState list;
  (void)PressRow(list, {.row = 2});
  (void)PressRow(list, {.row = 5, .shift = true});
  (void)PressRow(list, {.row = 4});
  EXPECT_EQ(list.selection.rows.size(), 4u);
  EXPECT_EQ(list.selection.focusRow, 4);
  EXPECT_EQ(list.selection.anchorRow, 4);
  (void)PressRow(list, {.row = 7});
  EXPECT_EQ(SelectedRows(list.selection, 10), Rows{7});
}

TEST(PressRow, ClearsBesideTheRows) {
  ListState list;
  (void)PressRow(list, {.row = 2});
  EXPECT_EQ(PressRow(list, {.row = -1, .ctrl = true}), PressOutcome::kNothing);
  EXPECT_EQ(list.selection.rows.size(), 1u);
  (void)PressRow(list, {.row = -1});
  EXPECT_TRUE(list.selection.rows.empty());
  EXPECT_EQ(list.selection.focusRow, -1);
}

TEST(PressRow, RenamesAtASlowSecondClickOnTheName) {
  for (const auto& [passed, outcome] :
       {std::pair(499u, PressOutcome::kSelected), std::pair(500u, PressOutcome::kRename),
        std::pair(1'200u, PressOutcome::kRename), std::pair(1'201u, PressOutcome::kSelected)}) {
    ListState list;
    (void)PressRow(list, {.row = 2, .isNameColumn = true, .nowMs = 10'000});
    EXPECT_EQ(PressRow(list, {.row = 2, .isNameColumn = true, .nowMs = 10'000 + passed}), outcome)
        << passed;
  }
}

TEST(PressRow, RenamesOnlyTheNameThatWasClickedLast) {
  ListState list;
  (void)PressRow(list, {.row = 2, .isNameColumn = true, .nowMs = 10'000});
  EXPECT_EQ(PressRow(list, {.row = 3, .isNameColumn = true, .nowMs = 10'700}), PressOutcome::kSelected);
  (void)PressRow(list, {.row = 3, .isNameColumn = false, .nowMs = 11'300});
  EXPECT_EQ(PressRow(list, {.row = 3, .isNameColumn = true, .nowMs = 12'000}), PressOutcome::kSelected);
  EXPECT_EQ(PressRow(list, {.row = 3, .isNameColumn = true, .nowMs = 12'700}), PressOutcome::kRename);
  EXPECT_EQ(PressRow(list, {.row = 3, .isNameColumn = true, .nowMs = 13'400}), PressOutcome::kSelected);
}

TEST(DoublePressRow, TakesTheFocusAndKeepsTheNextClickFromARename) {
  ListState list;
  (void)PressRow(list, {.row = 2, .isNameColumn = true, .nowMs = 10'000});
  DoublePressRow(list, 2);
  EXPECT_EQ(list.selection.focusRow, 2);
  EXPECT_EQ(SelectedRows(list.selection, 10), Rows{2});
  EXPECT_EQ(PressRow(list, {.row = 2, .isNameColumn = true, .nowMs = 10'700}), PressOutcome::kSelected);
}

}  // namespace
}  // namespace quilmark
