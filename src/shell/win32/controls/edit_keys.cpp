#include "shell/win32/controls/edit_keys.h"

#include <string>

#include "platform/win32/unique.h"
#include "platform/win32/wide.h"
#include "shell/view/edit_text.h"
#include "shell/win32/controls/window_text.h"

namespace quilmark {

namespace {

constexpr WPARAM kCtrlA = 1,
                 kCtrlBackspace = 0x7F;  // as characters; a multi-line edit does not know them

void Replace(HWND edit, const std::u16string& text) {
  SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void DeleteWord(HWND edit) {
  DWORD begin = 0, end = 0;
  SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
  if (begin == end) SendMessageW(edit, EM_SETSEL, WordStart(TextOfWindow(edit), begin), end);
  Replace(edit, {});
}

// The clipboard, opened before, for its own lifetime.
struct ClipboardScope {
  ClipboardScope() = default;
  ~ClipboardScope() { CloseClipboard(); }
  ClipboardScope(const ClipboardScope&) = delete;
  ClipboardScope& operator=(const ClipboardScope&) = delete;
};

// Memory that a handle of the system stands for, held in its place.
struct LockedMemoryTraits {
  using Value = HGLOBAL;
  static Value Empty() { return nullptr; }
  static void Close(Value memory) { GlobalUnlock(memory); }
};

std::u16string TextIn(HGLOBAL memory) {
  const auto* const units = static_cast<const wchar_t*>(GlobalLock(memory));
  if (units == nullptr) return {};
  const Unique<LockedMemoryTraits> lock(memory);
  return FromWide(units);
}

// Empty where the clipboard has no text, or stays with another program.
std::u16string ClipboardText(HWND owner) {
  constexpr DWORD kPauseMs = 20;
  if (!OpenPatiently([owner] { return OpenClipboard(owner) != FALSE; }, [] { Sleep(kPauseMs); })) {
    return {};
  }
  const ClipboardScope clipboard;
  const HANDLE data = GetClipboardData(CF_UNICODETEXT);
  return data != nullptr ? TextIn(data) : std::u16string();
}

}  // namespace

bool TakeTabKey(HWND control, UINT message, WPARAM wParam) {
  if (message != WM_KEYDOWN || wParam != VK_TAB || GetKeyState(VK_CONTROL) < 0) return false;
  const HWND parent = GetAncestor(control, GA_PARENT);
  const HWND next = GetNextDlgTabItem(parent, control, GetKeyState(VK_SHIFT) < 0);
  if (next != nullptr) SetFocus(next);
  return true;
}

std::optional<LRESULT> TakeEditMessage(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
  if (TakeTabKey(edit, message, wParam)) return 0;
  if (message == WM_MOUSEWHEEL || message == WM_MOUSEHWHEEL) {
    // One line has nothing to scroll, and a multi-line edit would not hand the message on.
    return SendMessageW(GetAncestor(edit, GA_PARENT), message, wParam, lParam);
  }
  if (message == WM_PASTE) {
    // If the clipboard gives no text, the selection stays.
    if (const std::u16string text = FirstLine(ClipboardText(edit)); !text.empty()) Replace(edit, text);
    return 0;
  }
  if (message != WM_CHAR) return std::nullopt;
  switch (wParam) {
    case kCtrlA:
      SendMessageW(edit, EM_SETSEL, 0, -1);
      return 0;
    case kCtrlBackspace:
      DeleteWord(edit);
      return 0;
    case '\r':
    case '\n':
    case '\t':
    case VK_ESCAPE:  // a multi-line edit would break the line, or beep
      return 0;
    default:
      return std::nullopt;
  }
}

}  // namespace quilmark
