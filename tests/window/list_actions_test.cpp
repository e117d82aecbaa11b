// What is done with the files of the list, by real keys and the mouse; another program reads the result.
#include <gtest/gtest.h>

#include <windows.h>

#include <shellapi.h>

#include <filesystem>

#include "platform/win32/wide.h"
#include "window/results_list.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

using Paths = std::vector<std::u16string>;

Paths FilesOf(HDROP drop) {
  Paths files;
  const UINT count = DragQueryFileW(drop, 0xFFFF'FFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::u16string path(DragQueryFileW(drop, i, nullptr, 0), u'\0');
    DragQueryFileW(drop, i, Wide(path.data()), static_cast<UINT>(path.size() + 1));
    files.push_back(std::move(path));
  }
  return files;
}

// The number of a medium of 4 bytes.
uint32_t EffectIn(HGLOBAL memory) {
  const auto* const effect = static_cast<const uint32_t*>(GlobalLock(memory));
  const uint32_t value = effect != nullptr ? *effect : 0;
  GlobalUnlock(memory);
  return value;
}

UINT EffectFormat() { return RegisterClipboardFormatW(L"Preferred DropEffect"); }

// What the clipboard holds.
struct Pasted {
  Paths files;
  uint32_t effect = 0;
};

Pasted Paste() {
  Pasted pasted;
  if (!OpenClipboard(nullptr)) return pasted;
  if (const HANDLE drop = GetClipboardData(CF_HDROP)) pasted.files = FilesOf(static_cast<HDROP>(drop));
  if (const HANDLE effect = GetClipboardData(EffectFormat())) pasted.effect = EffectIn(effect);
  CloseClipboard();
  return pasted;
}

class ListActions : public ResultsList {
 protected:
  std::u16string PathOnDisk(int row) {
    return (program.Drive().HostPath() / "docs" / NameOf(row)).make_preferred().u16string();
  }
  bool IsOnDrive(int row) { return fs::exists(program.Drive().HostPath() / "docs" / NameOf(row)); }
  void ChooseRow(int row) {
    ClickRow(row);
    WaitUntil("the row", [&] { return Selected() == 1 && program.Ask(Probe::kFocusRow) == row; });
  }
  void ChooseRows(int first, int last) {
    ChooseRow(first);
    program.ClickWith(VK_SHIFT, program.Window(), 150, MiddleOf(last));
    WaitForSelected(last - first + 1);
  }
  static constexpr const wchar_t* kQuestion = L"Confirm Delete";
  static HWND Question() { return FindWindowW(L"#32770", kQuestion); }
  std::u16string TextOfQuestion() { return program.TextOf(GetDlgItem(Question(), 0xFFFF)); }
};

TEST_F(ListActions, CopyAndCutForAnotherProgram) {
  ChooseRows(2, 3);
  const Paths files = {PathOnDisk(2), PathOnDisk(3)};
  program.PressCtrl('C');
  Pasted pasted;
  WaitUntil("a copy", [&] { return (pasted = Paste()).effect == 1; });
  EXPECT_EQ(pasted.files, files);
  program.PressCtrl('X');
  WaitUntil("a cut", [&] { return (pasted = Paste()).effect == 2; });
  EXPECT_EQ(pasted.files, files);
  EXPECT_EQ(program.Ask(Probe::kRows), kFiles) << "the list waits for news";
}

// The drive has no journal: a row that goes was taken out of the index at once.
TEST_F(ListActions, RecycleWithoutAQuestion) {
  ChooseRow(3);
  program.Press(VK_DELETE);
  WaitForRows(kFiles - 1);
  EXPECT_FALSE(IsOnDrive(3));
  EXPECT_TRUE(IsOnDrive(2) && IsOnDrive(4));
  EXPECT_EQ(PathOf(3), PathOnDrive(u"docs\\file-004.txt"));
  EXPECT_EQ(Question(), nullptr);
  EXPECT_EQ(FindWindowW(L"#32770", L"Error"), nullptr);
}

TEST_F(ListActions, DeleteForGoodAfterAQuestion) {
  ChooseRow(5);
  program.PressCtrl('D');
  WaitForBox(kQuestion);
  EXPECT_EQ(GetWindow(Question(), GW_OWNER), program.Window());
  EXPECT_EQ(TextOfQuestion(), u"Are you sure you want to delete this file?\n\nT:\\docs\\file-005.txt");
  program.Screenshot("list-delete-question");
  program.Press(VK_TAB);
  program.Press(VK_RETURN);  // No
  WaitUntil("no question", [] { return Question() == nullptr; });
  EXPECT_TRUE(IsOnDrive(5));

  ChooseRows(7, 9);  // not from row 5 on: a slow second click on its name would rename it
  program.PressCtrl('D');
  WaitForBox(kQuestion);
  EXPECT_EQ(TextOfQuestion(), u"Are you sure you want to permanently delete 3 selected items?");
  program.Press(VK_RETURN);
  WaitForRows(kFiles - 3);
  EXPECT_FALSE(IsOnDrive(7) || IsOnDrive(8) || IsOnDrive(9));
  EXPECT_TRUE(IsOnDrive(6) && IsOnDrive(10));
}

}  // namespace
}  // namespace quilmark
