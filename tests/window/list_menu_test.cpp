// The menu of the list, by the right button and the keys.
#include <gtest/gtest.h>

#include "window/results_list.h"

namespace quilmark {
namespace {

class ListMenu : public ResultsList {};

TEST_F(ListMenu, OpensOverARowAndChoosesIt) {
  OpenMenuOver(3);
  WaitForSelected(1);
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 3);
  program.Screenshot("list-menu");
  program.Press(VK_ESCAPE);
  WaitForNoMenu();
  EXPECT_EQ(Selected(), 1);
  program.ClickRight(150, FirstRow() - 10);
  EXPECT_FALSE(IsMenuOpen()) << "over the header";
}

TEST_F(ListMenu, KeepsTheChosenRowsUnderIt) {
  ClickRow(1);
  WaitForSelected(1);
  program.ClickWith(VK_SHIFT, program.Window(), 150, MiddleOf(4));
  WaitForSelected(4);
  OpenMenuOver(2);
  EXPECT_EQ(Selected(), 4);
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 2);
  program.Press(VK_ESCAPE);
  WaitForNoMenu();
}

TEST_F(ListMenu, SaysWhatIsNotThereYet) {
  const std::u16string_view statuses[] = {u"The Settings Center is not part of this version.",
                                          u"The duplicate finder is not part of this version.",
                                          u"Disk analysis is not part of this version."};
  for (int entry = 0; entry < 3; ++entry) {
    OpenMenuOver(3);
    ChooseFromTheEnd(entry);
    WaitUntil("the status", [&] { return program.Status() == statuses[entry]; });
  }
}

TEST_F(ListMenu, PutsTheTagsIntoTheSidebarAndBack) {
  const int64_t bar = program.Ask(Probe::kHeaderTop);
  OpenMenuOver(3);
  ChooseFromTheEnd(5);
  WaitUntil("the sidebar", [&] { return program.Ask(Probe::kHeaderTop) != bar; });
  OpenMenuAt(500, MiddleOf(3));
  program.Screenshot("list-menu-sidebar");
  ChooseFromTheEnd(4);
  WaitUntil("the bar", [&] { return program.Ask(Probe::kHeaderTop) == bar; });
}

}  // namespace
}  // namespace quilmark
