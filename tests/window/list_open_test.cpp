// Files are opened and shown from the list, by keys, the mouse and the menu.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/win32/wide.h"
#include "window/results_list.h"
#include "window/shell_log.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::u16string>;

class ListOpening : protected ShellLog, public ResultsList {
 protected:
  // Places in the menu, from 0: its lines are passed over by the keys.
  enum Entry {
    kOpen,
    kCopy,
    kCut,
    kShow,
    kCopyPath,
    kRunAsAdmin,
    kRename,
    kRecycle,
    kDelete,
    kSystem,
    kProperties
  };

  std::u16string Folder() { return (program.Drive().HostPath() / "docs").make_preferred().u16string(); }
  std::u16string PathOnDisk(int row) {
    const std::string name = NameOf(row);
    return Folder() + u"\\" + std::u16string(name.begin(), name.end());
  }
  // A call with the folder of the file.
  std::u16string CallOf(std::u16string_view verb, int row) {
    return std::u16string(verb) + u"\t" + PathOnDisk(row) + u"\t\t" + Folder();
  }
  void WaitForCall(const std::u16string& call) {
    WaitUntil("the call", [&] {
      const Calls calls = ShellCalls();
      return !calls.empty() && calls.back() == call;
    });
  }
  void ChooseOver(int row, Entry entry) {
    OpenMenuOver(row);
    ChooseEntry(entry);
  }
  static std::u16string ClipboardText() {
    std::u16string text;
    if (!OpenClipboard(nullptr)) return text;
    if (const HANDLE held = GetClipboardData(CF_UNICODETEXT)) {
      text = FromWide(static_cast<const wchar_t*>(GlobalLock(held)));
      GlobalUnlock(held);
    }
    CloseClipboard();
    return text;
  }
};

TEST_F(ListOpening, ByEnterAndBothClicks) {
  ClickRow(2);
  WaitForSelected(1);
  program.Press(VK_RETURN);
  WaitForCall(CallOf(u"open", 2));
  ClickRow(4);
  ClickRow(4);
  WaitForCall(CallOf(u"open", 4));
  EXPECT_EQ(ShellCalls().size(), 2u);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(ListOpening, ByEnterOpensAllThatAreChosen) {
  ClickRow(2);
  program.ClickWith(VK_SHIFT, program.Window(), 150, MiddleOf(4));
  WaitForSelected(3);
  program.Press(VK_RETURN);
  WaitForCall(CallOf(u"open", 4));
  EXPECT_EQ(ShellCalls(), (Calls{CallOf(u"open", 2), CallOf(u"open", 3), CallOf(u"open", 4)}));
}

TEST_F(ListOpening, ByTheMenu) {
  ChooseOver(1, kOpen);
  WaitForCall(CallOf(u"open", 1));
  ChooseOver(2, kRunAsAdmin);
  WaitForCall(CallOf(u"runas", 2));
  ChooseOver(3, kProperties);
  WaitForCall(CallOf(u"properties", 3));
  ChooseOver(4, kShow);
  WaitUntil("the file manager", [&] { return ShellCalls().size() == 4; });
  const std::u16string shown = ShellCalls().back();
  EXPECT_EQ(shown, u"open\tC:\\windows\\explorer.exe\t/select,\"" + PathOnDisk(4) + u"\"\tC:\\windows");
}

TEST_F(ListOpening, CopiesThePathByTheMenu) {
  ChooseOver(5, kCopyPath);
  WaitUntil("the path", [] { return ClipboardText() == u"T:\\docs\\file-005.txt"; });
  EXPECT_TRUE(ShellCalls().empty());
}

TEST_F(ListOpening, RenamesByTheMenu) {
  ChooseOver(6, kRename);
  WaitUntil("the editor", [this] { return program.Ask(Probe::kRenameFocused) == 1; });
  EXPECT_EQ(program.TextOf(Editor()), u"file-006.txt");
  program.Press(VK_ESCAPE);
  WaitForNoEditor();
}

TEST_F(ListOpening, RecyclesAndAsksByTheMenu) {
  ChooseOver(7, kRecycle);
  WaitForRows(kFiles - 1);
  EXPECT_EQ(PathOf(7), PathOnDrive(u"docs\\file-008.txt"));
  ChooseOver(0, kDelete);
  WaitForBox(L"Confirm Delete");
  program.Press(VK_TAB);
  program.Press(VK_RETURN);  // No
  WaitUntil("no question", [] { return FindWindowW(L"#32770", L"Confirm Delete") == nullptr; });
  EXPECT_EQ(program.Ask(Probe::kRows), kFiles - 1);
}

TEST_F(ListOpening, OpensTheMenuOfTheSystem) {
  OpenMenuOver(3);
  for (int i = 0; i <= kSystem; ++i) program.Press(VK_DOWN);
  const HWND first = FindWindowW(L"#32768", nullptr);
  program.Press(VK_RETURN);
  WaitUntil("the system's menu", [&] {
    const HWND menu = FindWindowW(L"#32768", nullptr);
    return menu != nullptr && menu != first && IsWindowVisible(menu) != FALSE;
  });
  program.Screenshot("list-system-menu");
  program.Press(VK_ESCAPE);
  WaitForNoMenu();
  EXPECT_EQ(Selected(), 1);
}

TEST_F(ListOpening, GreysWhatNeedsAFileBesideTheRows) {
  program.SearchFor(u"-199");  // behind what stands in the box
  WaitForRows(1);
  OpenMenuAt(600, MiddleOf(3));
  program.Screenshot("list-menu-beside");
  program.Press(VK_ESCAPE);
  WaitForNoMenu();
  OpenMenuAt(600, MiddleOf(3));
  ChooseEntry(kOpen);
  EXPECT_TRUE(ShellCalls().empty());
}

}  // namespace
}  // namespace quilmark
