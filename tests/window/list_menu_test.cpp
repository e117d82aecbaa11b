// The menu of the list, by the right button and the keys.
#include <gtest/gtest.h>

#include "window/results_list.h"

namespace quilmark {
namespace {

class ListMenu : public ResultsList {
 protected:
  static HWND Menu() { return FindWindowW(L"#32768", nullptr); }
  static bool IsOpen() { return Menu() != nullptr && IsWindowVisible(Menu()); }

  void OpenAt(int x, int y) {
    program.ClickRight(x, y);
    WaitUntil("the menu", IsOpen);
  }
  void OpenOver(int row) { OpenAt(150, MiddleOf(row)); }
  void WaitForNone() {
    WaitUntil("the end of the menu", [] { return !IsOpen(); });
  }
  // The entry that stands so far from the last one, which is 0.
  void ChooseFromTheEnd(int entry) {
    for (int i = 0; i <= entry; ++i) program.Press(VK_UP);
    program.Press(VK_RETURN);
    WaitForNone();
  }
};

TEST_F(ListMenu, OpensOverARowAndChoosesIt) {
  OpenOver(3);
  WaitForSelected(1);
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 3);
  program.Screenshot("list-menu");
  program.Press(VK_ESCAPE);
  WaitForNone();
  EXPECT_EQ(Selected(), 1);
  program.ClickRight(150, FirstRow() - 10);
  EXPECT_FALSE(IsOpen()) << "over the header";
}

TEST_F(ListMenu, KeepsTheChosenRowsUnderIt) {
  ClickRow(1);
  WaitForSelected(1);
  program.ClickWith(VK_SHIFT, program.Window(), 150, MiddleOf(4));
  WaitForSelected(4);
  OpenOver(2);
  EXPECT_EQ(Selected(), 4);
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 2);
  program.Press(VK_ESCAPE);
  WaitForNone();
}

TEST_F(ListMenu, SaysWhatIsNotThereYet) {
  const std::u16string_view statuses[] = {u"The Settings Center is not part of this version.",
                                          u"The duplicate finder is not part of this version.",
                                          u"Disk analysis is not part of this version."};
  for (int entry = 0; entry < 3; ++entry) {
    OpenOver(3);
    ChooseFromTheEnd(entry);
    WaitUntil("the status", [&] { return program.Status() == statuses[entry]; });
  }
}

TEST_F(ListMenu, PutsTheTagsIntoTheSidebarAndBack) {
  const int64_t bar = program.Ask(Probe::kHeaderTop);
  OpenOver(3);
  ChooseFromTheEnd(5);
  WaitUntil("the sidebar", [&] { return program.Ask(Probe::kHeaderTop) != bar; });
  OpenAt(500, MiddleOf(3));
  program.Screenshot("list-menu-sidebar");
  ChooseFromTheEnd(4);
  WaitUntil("the bar", [&] { return program.Ask(Probe::kHeaderTop) == bar; });
}

}  // namespace
}  // namespace quilmark
