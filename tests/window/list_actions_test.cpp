// What is done with the files of the list, by real keys and the mouse; another program reads the result.
#include <gtest/gtest.h>

#include <ole2.h>
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
  static HWND Question() { return FindWindowW(L"#32770", L"Confirm Delete"); }
  void WaitForQuestion(bool isOpen) {
    WaitUntil("the question", [&] { return (Question() != nullptr) == isOpen; });
  }
  std::u16string TextOfQuestion() { return program.TextOf(GetDlgItem(Question(), 0xFFFF)); }
};

TEST_F(ListActions, CopyAndCutForAnotherProgram) {
  ChooseRows(2, 3);
  const Paths files = {PathOnDisk(2), PathOnDisk(3)};
  program.PressCtrl('C');
  WaitUntil("a copy", [] { return Paste().effect == 1; });
  EXPECT_EQ(Paste().files, files);
  program.PressCtrl('X');
  WaitUntil("a cut", [] { return Paste().effect == 2; });
  EXPECT_EQ(Paste().files, files);
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
  WaitForQuestion(true);
  EXPECT_EQ(GetWindow(Question(), GW_OWNER), program.Window());
  EXPECT_EQ(TextOfQuestion(), u"Are you sure you want to delete this file?\n\nT:\\docs\\file-005.txt");
  program.Screenshot("list-delete-question");
  program.Press(VK_TAB);
  program.Press(VK_RETURN);  // No
  WaitForQuestion(false);
  EXPECT_TRUE(IsOnDrive(5));

  ChooseRows(5, 7);
  program.PressCtrl('D');
  WaitForQuestion(true);
  EXPECT_EQ(TextOfQuestion(), u"Are you sure you want to permanently delete 3 selected items?");
  program.Press(VK_RETURN);
  WaitForRows(kFiles - 3);
  EXPECT_FALSE(IsOnDrive(5) || IsOnDrive(6) || IsOnDrive(7));
  EXPECT_TRUE(IsOnDrive(4) && IsOnDrive(8));
}

// The interfaces of COM have no virtual destructor.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// A window that takes files, and writes down what it was given. It ends with the test.
class DropWindow final : public IDropTarget {
 public:
  virtual ~DropWindow() = default;
  explicit DropWindow(const RECT& place) {
    EXPECT_EQ(OleInitialize(nullptr), S_OK);
    window_ =
        CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"takes files", WS_POPUP | WS_VISIBLE | SS_NOTIFY,
                        place.left, place.top, place.right - place.left, place.bottom - place.top,
                        nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(RegisterDragDrop(window_, this), S_OK);
  }
  void Close() {
    RevokeDragDrop(window_);
    DestroyWindow(window_);
    OleUninitialize();
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool isKnown = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDropTarget);
    *object = isKnown ? static_cast<IDropTarget*>(this) : nullptr;
    return isKnown ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE DragEnter(IDataObject*, DWORD, POINTL, DWORD* effect) override {
    allowed = *effect;
    *effect = DROPEFFECT_COPY;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DragOver(DWORD, POINTL, DWORD* effect) override {
    *effect = DROPEFFECT_COPY;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DragLeave() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD, POINTL, DWORD* effect) override {
    FORMATETC format = {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium = {};
    if (SUCCEEDED(data->GetData(&format, &medium))) {
      files = FilesOf(static_cast<HDROP>(medium.hGlobal));
      ReleaseStgMedium(&medium);
    }
    format.cfFormat = static_cast<CLIPFORMAT>(EffectFormat());
    if (SUCCEEDED(data->GetData(&format, &medium))) {
      preferred = EffectIn(medium.hGlobal);
      ReleaseStgMedium(&medium);
    }
    *effect = DROPEFFECT_COPY;
    isDropped = true;
    return S_OK;
  }

  Paths files;
  DWORD allowed = 0;
  uint32_t preferred = 0;
  bool isDropped = false;

 private:
  HWND window_ = nullptr;
};
#pragma GCC diagnostic pop

void HandOutMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

TEST_F(ListActions, DragIntoAnotherProgram) {
  ChooseRows(1, 2);
  RECT frame = {};
  GetWindowRect(program.Window(), &frame);
  POINT row = {150, MiddleOf(1)};
  ClientToScreen(program.Window(), &row);
  DropWindow target({frame.left + 500, row.y + 200, frame.left + 700, row.y + 300});
  HandOutMessages();
  const POINT within = {frame.left + 600, row.y + 250};

  program.MouseAt(row, MOUSEEVENTF_LEFTDOWN);
  WaitUntil("the drop", [&] {
    HandOutMessages();
    static int step = 0;
    // Back and forth, until the drag has begun and the target has seen it.
    const bool isOver = target.allowed != 0;
    program.MouseAt({within.x + ++step % 2, within.y}, isOver ? MOUSEEVENTF_LEFTUP : 0);
    return target.isDropped;
  });
  target.Close();
  EXPECT_EQ(target.files, (Paths{PathOnDisk(1), PathOnDisk(2)}));
  EXPECT_EQ(target.allowed, static_cast<DWORD>(DROPEFFECT_COPY)) << "never a move";
  EXPECT_EQ(target.preferred, 1u);
  EXPECT_EQ(Selected(), 2);
  EXPECT_TRUE(IsOnDrive(1) && IsOnDrive(2));
}

}  // namespace
}  // namespace quilmark
