// The list under the keyboard: where a rename may begin, how it ends, and what shows the focus.
#include <gtest/gtest.h>

#include <filesystem>

#include "config/palette.h"
#include "window/results_list.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

class ListKeys : public ResultsList {
 protected:
  bool IsOnDrive(const std::string& name) { return fs::exists(program.Drive().HostPath() / name); }
  // F2 with all its effect before this returns, whoever has the focus.
  void PressF2AtOnce() { SendMessageW(program.Window(), WM_KEYDOWN, VK_F2, 0); }
  void PressAtOnce(int row, WPARAM modifier = 0) {
    const LPARAM place = MAKELPARAM(150, MiddleOf(row));
    SendMessageW(program.Window(), WM_LBUTTONDOWN, MK_LBUTTON | modifier, place);
    SendMessageW(program.Window(), WM_LBUTTONUP, modifier, place);
  }
  static int64_t Span(int64_t begin, int64_t end) { return begin + 65'536 * end; }
};

TEST_F(ListKeys, RenamesOnlyARowThatIsThereAndWhollyInView) {
  PressF2AtOnce();
  EXPECT_EQ(Editor(), nullptr) << "no row has the focus";
  for (const uint32_t view : {1u, 2u}) {
    program.Ask(Probe::kSetView, view);
    PressAtOnce(0);
    EXPECT_GE(program.Ask(Probe::kFocusRow), 0);
    PressF2AtOnce();
    EXPECT_EQ(Editor(), nullptr) << "view " << view;
  }
  program.Ask(Probe::kSetView, 0);
  PressAtOnce(0);
  TurnAtOnce(-WHEEL_DELTA / 10);  // ten pixels
  EXPECT_EQ(program.Ask(Probe::kScrollY), 10);
  PressF2AtOnce();
  EXPECT_EQ(Editor(), nullptr) << "its upper end is below the header";
  program.Ask(Probe::kShowRow, 100);
  PressAtOnce(0);
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 100);
  program.Ask(Probe::kShowRow, 0);
  PressF2AtOnce();
  EXPECT_EQ(Editor(), nullptr) << "far below";
  program.Ask(Probe::kShowRow, 100);
  PressF2AtOnce();
  EXPECT_NE(Editor(), nullptr);
}

TEST_F(ListKeys, SelectsWhatIsToBeRenamedAndTakesItByTab) {
  OpenEditor(3);
  EXPECT_EQ(program.Ask(Probe::kEditorSelection), Span(0, 8));  // file-003 of file-003.txt
  PressF2AtOnce();
  EXPECT_EQ(program.Ask(Probe::kEditorSelection), Span(0, 12));
  EXPECT_EQ(program.Ask(Probe::kRenameFocused), 1);
  program.Press(VK_ESCAPE);
  WaitForNoEditor();
  WaitUntil("the search box", [this] { return program.Ask(Probe::kSearchBoxFocused) == 1; });

  // Each time another row: two quick clicks on one are a double click.
  OpenEditor(5);  // and nothing is changed
  program.Press(VK_RETURN);
  WaitForNoEditor();
  OpenEditor(7);  // or nothing is left
  program.PressCtrl(u'A');
  program.Type(u"   ");
  program.Press(VK_RETURN);
  WaitForNoEditor();
  EXPECT_EQ(FindWindowW(L"#32770", L"Error"), nullptr);
  EXPECT_TRUE(IsOnDrive("docs/" + NameOf(7)));
  EXPECT_EQ(PathOf(7), PathOnDrive(u"docs\\file-007.txt"));

  OpenEditor(9);
  program.Type(u"file-009a");
  program.Press(VK_TAB);
  WaitForNoEditor();
  EXPECT_EQ(PathOf(9), PathOnDrive(u"docs\\file-009a.txt"));
  EXPECT_TRUE(IsOnDrive("docs/file-009a.txt"));
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 9);
  EXPECT_EQ(Selected(), 1);
}

TEST_F(ListKeys, TellsWhyARenameFailedAndGoesBackToTheName) {
  OpenEditor(3);
  program.Type(u"file-004");
  program.Press(VK_RETURN);
  HWND box = nullptr;
  WaitUntil("the message", [&] {
    box = FindWindowW(L"#32770", L"Error");
    return box != nullptr && IsWindowVisible(box);
  });
  constexpr int kTextOfMessageBox = 0xFFFF;
  EXPECT_EQ(program.TextOf(GetDlgItem(box, kTextOfMessageBox)), u"Rename failed.\nError: 183");
  PostMessageW(box, WM_CLOSE, 0, 0);
  WaitUntil("the end of the message", [&] { return !IsWindow(box); });
  WaitUntil("the focus in the editor", [this] {
    SetForegroundWindow(program.Window());  // a screen's manager need not give it back
    return program.Ask(Probe::kRenameFocused) == 1;
  });
  EXPECT_EQ(program.TextOf(Editor()), u"file-004.txt");
  EXPECT_EQ(program.Ask(Probe::kEditorSelection), Span(0, 12));
  // To the editor itself: the screen's manager may have the focus elsewhere for a moment.
  SendMessageW(Editor(), WM_KEYDOWN, VK_ESCAPE, 0);
  WaitForNoEditor();
  EXPECT_EQ(PathOf(3), PathOnDrive(u"docs\\file-003.txt"));
  EXPECT_TRUE(IsOnDrive("docs/" + NameOf(3)));
}

TEST_F(ListKeys, GivesTheRowOfADoubleClickTheFocusAndDoesNotRenameIt) {
  PressAtOnce(1);
  PressAtOnce(4, MK_CONTROL);
  EXPECT_EQ(Selected(), 2);
  const LPARAM place = MAKELPARAM(150, MiddleOf(6));
  PressAtOnce(6);
  SendMessageW(program.Window(), WM_LBUTTONDBLCLK, MK_LBUTTON, place);
  SendMessageW(program.Window(), WM_LBUTTONUP, 0, place);
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 6);
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(ListKeys, ShowsWhichControlHasTheFocus) {
  // The custom ranges too, and tags that all stand in one row.
  Choose(106, 4);
  Choose(107, 4);
  const Palette palette = ThemeDefaults(program.Ask(Probe::kDarkTheme) != 0);
  const DWORD thread = GetWindowThreadProcessId(program.Window(), nullptr);
  const auto focused = [thread] {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(thread, &info);
    return info.hwndFocus;
  };
  // In the middle of a control's upper edge, as it stands on the screen.
  const auto edgeOf = [](HWND control) {
    RECT place = {};
    GetWindowRect(control, &place);
    const HDC screen = GetDC(nullptr);
    const COLORREF color = GetPixel(screen, (place.left + place.right) / 2, place.top);
    ReleaseDC(nullptr, screen);
    return color;
  };
  program.Click(program.SearchBox(), 100, 20);
  HWND control = program.SearchBox();
  std::vector<int> seen;
  do {
    WaitUntil("the focus", [&] { return focused() == control; });
    const int id = GetDlgCtrlID(control);
    WaitUntil("the ring of " + std::to_string(id), [&] { return edgeOf(control) == palette.focusRing; });
    seen.push_back(id);
    if (seen.size() == 2) program.Screenshot("focus");
    const HWND left = control;
    program.Press(VK_TAB);
    WaitUntil("the next control", [&] { return focused() != left; });
    WaitUntil("no ring on " + std::to_string(id), [&] { return edgeOf(left) != palette.focusRing; });
    control = focused();
  } while (control != program.SearchBox() && seen.size() < 30);
  for (const int id : {101, 104, 106, 107, 108, 110, 111, 112, 200, 207}) {
    EXPECT_TRUE(std::find(seen.begin(), seen.end(), id) != seen.end()) << id;
  }
  EXPECT_EQ(seen.size(), 16u);
}

TEST(ListKeysOfFolders, SelectTheWholeName) {
  WindowProgram program;
  program.Drive().MakeFolder("folder.of.dots");
  program.StartAndWait();
  program.SearchFor(u"dots");
  const int middle = static_cast<int>(program.Ask(Probe::kHeaderTop)) + 40 + 44 / 2;
  program.Click(program.Window(), 150, middle);
  WaitUntil("the row", [&] { return program.Ask(Probe::kFocusRow) == 0; });
  program.Press(VK_F2);
  WaitUntil("the editor", [&] { return program.Ask(Probe::kRenameFocused) == 1; });
  EXPECT_EQ(program.Ask(Probe::kEditorSelection), 65'536 * 14);
  program.Type(u"plain");
  program.Press(VK_RETURN);
  WaitUntil("the end of the editor", [&] { return program.Ask(Probe::kRenameEditor) == 0; });
  EXPECT_TRUE(fs::is_directory(program.Drive().HostPath() / "plain"));
  EXPECT_FALSE(fs::exists(program.Drive().HostPath() / "folder.of.dots"));
  program.Exit();
  EXPECT_EQ(program.WaitForEnd(), 0u);
}

}  // namespace
}  // namespace quilmark
