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
  void WaitForPicker() {
    WaitUntil("the picker", [] { return IsPickerOpen() && GetForegroundWindow() == Picker(); });
  }
  void WaitForNoPicker() {
    WaitUntil("no picker", [] { return !IsPickerOpen(); });
  }
  // Comes by itself with the second key.
  void OpenPicker() {
    program.Type(u"s:");
    WaitForPicker();
  }
  static int64_t CountOfRows() { return SendMessageW(Part(kPickerList), LVM_GETITEMCOUNT, 0, 0); }
  static bool IsTicked(int row) {
    return (SendMessageW(Part(kPickerList), LVM_GETITEMSTATE, static_cast<WPARAM>(row),
                         LVIS_STATEIMAGEMASK) >>
            12) == 2;
  }
  void ClickPart(int id) {
    RECT client = {};
    GetClientRect(Part(id), &client);
    program.Click(Part(id), client.right / 2, client.bottom / 2);
  }
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
  program.Press(VK_RETURN);
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
  program.Press(VK_ESCAPE);
  WaitForNoPicker();
  EXPECT_EQ(BoxText(), u"s:");
  WaitUntil("the focus", [this] { return program.Ask(Probe::kSearchBoxFocused) == 1; });
  program.Press(VK_RETURN);
  WaitForPicker();
  program.Press(VK_ESCAPE);
  WaitForNoPicker();
  WaitUntil("the focus", [this] { return program.Ask(Probe::kSearchBoxFocused) == 1; });
  program.Press(VK_F4);
  WaitForPicker();
  program.Press(VK_ESCAPE);
  WaitForNoPicker();
  WaitUntil("the focus", [this] { return program.Ask(Probe::kSearchBoxFocused) == 1; });
  program.Type(u"needle|");
  WaitForPicker();
  program.Press(VK_ESCAPE);
  WaitForNoPicker();
  EXPECT_EQ(BoxText(), u"s:needle|");
}

TEST_F(ContentInTheWindow, ThePickerAddsDeletesAndInverts) {
  OpenPicker();
  ClickPart(kPickerField);
  program.Type(u"bin,cfg");
  program.Press(VK_RETURN);
  WaitUntil("two more", [] { return CountOfRows() == 10; });
  EXPECT_TRUE(IsPickerOpen()) << "Enter in the field adds";
  EXPECT_EQ(program.TextOf(Part(kPickerField)), u"");
  ClickPart(kPickerInvert);
  WaitUntil("no ticks", [] { return !IsTicked(0) && !IsTicked(9); });
  program.Click(Part(kPickerList), 60, 8);  // selects the first
  program.Press(VK_DELETE);
  WaitForBox(L"Quilmark");
  program.Press(VK_RETURN);
  WaitUntil("one less", [] { return CountOfRows() == 9; });
  ClickPart(kPickerInvert);
  ClickPart(kPickerConfig);
  WaitUntil("the file opened", [this] { return ShellCalls().size() == 1; });
  EXPECT_NE(ShellCalls()[0].find(u"content_search_exts.ini"), std::u16string::npos);
  program.Click(Part(kPickerList), 60, 8);
  program.Press(VK_RETURN);
  WaitForBoxText(u"s:|.log,.md,.csv,.json,.xml,.html,.htm,.bin,.cfg");
}

TEST_F(ContentInTheWindow, TheTabKeyGoesRoundInThePicker) {
  OpenPicker();
  std::vector<int> order;
  for (int i = 0; i < 9; ++i) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(Picker(), nullptr), &info);
    order.push_back(GetDlgCtrlID(info.hwndFocus));
    program.Press(VK_TAB);
    WaitUntil("another focus", [&] {
      GetGUIThreadInfo(GetWindowThreadProcessId(Picker(), nullptr), &info);
      return GetDlgCtrlID(info.hwndFocus) != order.back();
    });
  }
  EXPECT_EQ(order, (std::vector<int>{kPickerList, kPickerField, kPickerAdd, kPickerDelete, 42'180,
                                     42'181, kPickerInvert, kPickerConfig, 42'182}));
}

TEST_F(ContentInTheWindow, ThePickerWearsTheThemeAndTheScale) {
  program.Ask(Probe::kSwitchTheme, 1);
  OpenPicker();
  program.Screenshot("picker-dark");
  RECT place = {};
  GetWindowRect(Picker(), &place);
  EXPECT_EQ(place.right - place.left, 400);
  EXPECT_EQ(place.bottom - place.top, 520);
  program.Press(VK_ESCAPE);
  WaitForNoPicker();
  PostMessageW(program.Window(), WM_DPICHANGED, MAKEWPARAM(144, 144), 0);
  WaitUntil("the scale", [this] { return program.Ask(Probe::kDpi) == 144; });
  WaitUntil("the focus", [this] { return program.Ask(Probe::kSearchBoxFocused) == 1; });
  program.Press(VK_F4);
  WaitForPicker();
  GetWindowRect(Picker(), &place);
  EXPECT_EQ(place.right - place.left, 600);
  EXPECT_EQ(place.bottom - place.top, 780);
  program.Screenshot("picker-150");
  program.Press(VK_ESCAPE);
  WaitForNoPicker();
}

}  // namespace
}  // namespace quilmark
