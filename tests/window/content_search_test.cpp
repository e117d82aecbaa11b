// Content searches in the window, and the window that chooses their file types.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include "platform/text_file.h"
#include "window/results_list.h"
#include "window/shell_log.h"

namespace quilmark {
namespace {

constexpr int kPickerList = 42'170, kPickerField = 42'184, kPickerAdd = 42'185, kPickerDelete = 42'187,
              kPickerInvert = 42'186, kPickerConfig = 42'183;

class ContentInTheWindow : protected ShellLog, public ListProgram {
 protected:
  ContentInTheWindow() {
    program.Drive().MakeFile("docs/one.txt", "a needle in it");
    program.Drive().MakeFile("docs/two.md", "another needle");
    program.Drive().MakeFile("docs/three.log", "nothing");
    program.Drive().MakeFile("docs/four.bin", "needle");
    program.StartAndWait();
  }
  static HWND Picker() { return FindWindowW(L"QuilmarkContentExtPickerV4", nullptr); }
  static HWND Part(int id) { return GetDlgItem(Picker(), id); }
  static bool IsPickerOpen() { return Picker() != nullptr && IsWindowVisible(Picker()) != FALSE; }
  void WaitForPicker() { WaitUntil("the picker", IsPickerOpen); }
  void WaitForNoPicker() {
    WaitUntil("no picker", [] { return !IsPickerOpen(); });
  }
  // Comes by itself with the second key.
  void OpenPicker() {
    program.Type(u"s:");
    WaitForPicker();
  }
  // As a key does that goes to the part. Wine may give the keyboard back to the main window, whose
  // server knows nothing of a window like this.
  static void PressIn(int part, WPARAM key) { SendMessageW(Part(part), WM_KEYDOWN, key, 0); }
  void CloseByEscape() {
    PressIn(kPickerList, VK_ESCAPE);
    WaitForNoPicker();
    WaitUntil("the focus", [this] { return program.Ask(Probe::kSearchBoxFocused) == 1; });
  }
  static int64_t CountOfRows() { return SendMessageW(Part(kPickerList), LVM_GETITEMCOUNT, 0, 0); }
  static bool IsTicked(int row) {
    return (SendMessageW(Part(kPickerList), LVM_GETITEMSTATE, static_cast<WPARAM>(row),
                         LVIS_STATEIMAGEMASK) >>
            12) == 2;
  }
  static void ClickPart(int id) { SendMessageW(Part(id), BM_CLICK, 0, 0); }
  std::u16string BoxText() { return program.TextOf(program.SearchBox()); }
  void WaitForBoxText(std::u16string_view text) {
    WaitUntil("the query", [&] { return BoxText() == text; });
  }
  int64_t Searches() { return program.Ask(Probe::kSearchGeneration); }
};

TEST_F(ContentInTheWindow, FindsByEnterAndNotByTyping) {
  OpenPicker();
  program.Screenshot("picker-light");
  EXPECT_EQ(CountOfRows(), 8);
  EXPECT_TRUE(IsTicked(0) && IsTicked(7));
  const int64_t before = Searches();
  PressIn(kPickerList, VK_RETURN);
  WaitForNoPicker();
  WaitForBoxText(u"s:|.txt,.log,.md,.csv,.json,.xml,.html,.htm");
  EXPECT_EQ(program.Status(),
            u"Content-search extensions set. Type keywords then Enter. You can still edit |exts "
            u"manually.");
  WaitUntil("the focus", [this] { return program.Ask(Probe::kSearchBoxFocused) == 1; });
  program.Type(u"needle");
  WaitForBoxText(u"s:needle|.txt,.log,.md,.csv,.json,.xml,.html,.htm");
  EXPECT_EQ(Searches(), before);
  program.Press(VK_RETURN);
  WaitForRows(2);
  program.Screenshot("content-results");
  program.ExpectTitle(u"Quilmark - Filter: All Files | Hits: 2");
  program.Press(VK_ESCAPE);
  WaitUntil("the status", [this] { return program.Status() == u"Content search canceled."; });
  EXPECT_EQ(program.Ask(Probe::kRows), 2) << "what was found stays";
}

TEST_F(ContentInTheWindow, TheBarAndEnterWithoutWordsOpenThePicker) {
  OpenPicker();
  CloseByEscape();
  EXPECT_EQ(BoxText(), u"s:");
  program.Press(VK_RETURN);
  WaitForPicker();
  CloseByEscape();
  program.Press(VK_F4);
  WaitForPicker();
  CloseByEscape();
  program.Type(u"needle|");
  WaitForPicker();
  CloseByEscape();
  EXPECT_EQ(BoxText(), u"s:needle|");
}

TEST_F(ContentInTheWindow, ThePickerAddsDeletesAndInverts) {
  OpenPicker();
  SendMessageW(Part(kPickerField), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"bin,cfg"));
  PressIn(kPickerField, VK_RETURN);
  WaitUntil("two more", [] { return CountOfRows() == 10; });
  EXPECT_TRUE(IsPickerOpen()) << "Enter in the field adds";
  EXPECT_EQ(program.TextOf(Part(kPickerField)), u"");
  ClickPart(kPickerInvert);
  WaitUntil("no ticks", [] { return !IsTicked(0) && !IsTicked(9); });
  ClickPart(kPickerInvert);
  WaitUntil("ticks", [] { return IsTicked(0) && IsTicked(9); });
  ClickPart(kPickerConfig);
  WaitUntil("the file opened", [this] { return ShellCalls().size() == 1; });
  EXPECT_NE(ShellCalls()[0].find(u"content_search_exts.ini"), std::u16string::npos);
  PressIn(kPickerList, VK_RETURN);
  WaitForBoxText(u"s:|.txt,.log,.md,.csv,.json,.xml,.html,.htm,.bin,.cfg");
}

TEST_F(ContentInTheWindow, TheTabKeyGoesRoundInThePicker) {
  OpenPicker();
  std::vector<int> order;
  HWND control = Part(kPickerList);
  for (int i = 0; i < 9; ++i) {
    order.push_back(GetDlgCtrlID(control));
    control = GetNextDlgTabItem(Picker(), control, FALSE);
  }
  EXPECT_EQ(order, (std::vector<int>{kPickerList, kPickerField, kPickerAdd, kPickerDelete, 42'180,
                                     42'181, kPickerInvert, kPickerConfig, 42'182}));
  EXPECT_EQ(control, Part(kPickerList));
  CloseByEscape();
}

TEST_F(ContentInTheWindow, ThePickerWearsTheThemeAndTheScale) {
  program.Ask(Probe::kSwitchTheme, 1);
  OpenPicker();
  program.Screenshot("picker-dark");
  RECT place = {};
  GetWindowRect(Picker(), &place);
  EXPECT_EQ(place.right - place.left, 400);
  EXPECT_EQ(place.bottom - place.top, 520);
  CloseByEscape();
  PostMessageW(program.Window(), WM_DPICHANGED, MAKEWPARAM(144, 144), 0);
  WaitUntil("the scale", [this] { return program.Ask(Probe::kDpi) == 144; });
  program.Press(VK_F4);
  WaitForPicker();
  GetWindowRect(Picker(), &place);
  EXPECT_EQ(place.right - place.left, 600);
  EXPECT_EQ(place.bottom - place.top, 780);
  program.Screenshot("picker-150");
  CloseByEscape();
}

}  // namespace
}  // namespace quilmark
