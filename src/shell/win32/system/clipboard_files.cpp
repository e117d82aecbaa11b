#include "shell/win32/system/clipboard_files.h"

#include <cstring>

#include "shell/actions/drop_files.h"

namespace quilmark {

namespace {

// The clipboard, emptied, while this lives. Programs that look at every change of it have it for some
// milliseconds.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) {
    constexpr int kTries = 6;
    constexpr DWORD kPauseMs = 15;
    for (int i = 0; i < kTries && !isOpen_; ++i) {
      if (i > 0) Sleep(kPauseMs);
      isOpen_ = OpenClipboard(owner) != FALSE;
    }
    isEmpty_ = isOpen_ && EmptyClipboard();
  }
  ~OpenedClipboard() {
    if (isOpen_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;

  // The clipboard owns the block from then on. False where it does not take it.
  bool Put(UINT format, UniqueGlobal block) {
    if (!isEmpty_ || format == 0 || !block) return false;
    if (SetClipboardData(format, block.Get()) == nullptr) return false;
    block.Release();
    return true;
  }

  // Takes out what was put, as a part of it would be taken for something else.
  void Empty() {
    if (isOpen_) EmptyClipboard();
  }

 private:
  bool isOpen_ = false, isEmpty_ = false;
};

}  // namespace

UINT DropEffectFormat() { return RegisterClipboardFormatW(L"Preferred DropEffect"); }

UniqueGlobal GlobalBlock(std::span<const std::byte> bytes) {
  if (bytes.empty()) return {};
  UniqueGlobal block(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes.size()));
  void* const to = block ? GlobalLock(block.Get()) : nullptr;
  if (to == nullptr) return {};
  std::memcpy(to, bytes.data(), bytes.size());
  GlobalUnlock(block.Get());
  return block;
}

UniqueGlobal FilesBlock(const std::vector<std::u16string>& paths) {
  return GlobalBlock(DropFilesBlock(paths));
}

UniqueGlobal EffectBlock(DropEffect effect) { return GlobalBlock(std::as_bytes(std::span(&effect, 1))); }

bool PutTextOnClipboard(HWND owner, const std::u16string& text) {
  OpenedClipboard clipboard(owner);
  const std::span withNul(text.c_str(), text.size() + 1);
  return clipboard.Put(CF_UNICODETEXT, GlobalBlock(std::as_bytes(withNul)));
}

bool PutFilesOnClipboard(HWND owner, const std::vector<std::u16string>& paths, DropEffect effect) {
  OpenedClipboard clipboard(owner);
  if (clipboard.Put(CF_HDROP, FilesBlock(paths)) &&
      clipboard.Put(DropEffectFormat(), EffectBlock(effect))) {
    return true;
  }
  clipboard.Empty();
  return false;
}

}  // namespace quilmark
