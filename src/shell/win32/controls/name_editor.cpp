#include "shell/win32/controls/name_editor.h"

#include <commctrl.h>

#include <optional>
#include <utility>

#include "platform/win32/wide.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/controls/edit_line.h"
#include "shell/win32/controls/window_text.h"

namespace quilmark {

namespace {

constexpr UINT_PTR kSubclass = 1;
constexpr size_t kLongestName = 511;
constexpr int kTextInset = 3;  // pixels at 96 dpi

std::optional<ControlEvent::Kind> EndOfKey(WPARAM key) {
  if (key == VK_RETURN || key == VK_TAB) return ControlEvent::kEnter;
  if (key == VK_ESCAPE) return ControlEvent::kEscape;
  return std::nullopt;
}

}  // namespace

void NameEditor::Open(HWND parent, const EditorPlace& place, ControlHost& host) {
  if (IsOpen()) {
    TakeFocus();
    SelectAll();
    return;
  }
  host_ = &host;
  const Rect& rect = place.place;
  edit_ = CreateWindowExW(
      0, L"EDIT", Wide(place.text), WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL | ES_MULTILINE, rect.left,
      rect.top, Width(rect), Height(rect), parent, nullptr, GetModuleHandleW(nullptr), nullptr);
  SendMessageW(edit_, WM_SETFONT, reinterpret_cast<WPARAM>(host.Fonts().Of(FontRole::kList)), TRUE);
  Centre();
  SetWindowSubclass(edit_, Procedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
  TakeFocus();
  SendMessageW(edit_, EM_SETSEL, 0, static_cast<LPARAM>(place.selected));
}

void NameEditor::Move(const Rect& place) {
  if (!IsOpen()) return;
  const RECT former = ClientRectOf(edit_);
  SetWindowPos(edit_, nullptr, place.left, place.top, Width(place), Height(place),
               SWP_NOZORDER | SWP_NOACTIVATE);
  if (Width(place) != former.right || Height(place) != former.bottom) Centre();
}

void NameEditor::Close() {
  // Forgotten first, since it loses the focus while it is destroyed.
  const HWND edit = std::exchange(edit_, nullptr);
  if (edit != nullptr) DestroyWindow(edit);
}

bool NameEditor::HasFocus() const { return IsOpen() && GetFocus() == edit_; }

void NameEditor::TakeFocus() {
  if (IsOpen()) SetFocus(edit_);
}

void NameEditor::SelectAll() {
  if (IsOpen()) SendMessageW(edit_, EM_SETSEL, 0, -1);
}

void NameEditor::Centre() { CentreEditLine(edit_, kTextInset, kTextInset, host_->Context().dpi); }

void NameEditor::Tell(ControlEvent::Kind kind, HWND edit) {
  if (edit == edit_)
    host_->OnControl({.kind = kind, .id = kId, .text = TextOfWindow(edit, kLongestName)});
}

LRESULT CALLBACK NameEditor::Procedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                       DWORD_PTR reference) {
  NameEditor& self = *reinterpret_cast<NameEditor*>(reference);
  switch (message) {
    case WM_KEYDOWN:
      if (const auto end = EndOfKey(wParam)) {
        self.Tell(*end, edit);
        return 0;
      }
      break;
    case WM_CHAR:
    case WM_PASTE:
      if (const auto taken = TakeEditMessage(edit, message, wParam, lParam)) return *taken;
      break;
    case WM_KILLFOCUS:
      self.Tell(wParam == 0 ? ControlEvent::kLeftProgram : ControlEvent::kLeft, edit);
      if (!IsWindow(edit)) return 0;
      break;
    case WM_PAINT: {
      const LRESULT result = DefSubclassProc(edit, message, wParam, lParam);
      FrameClient(edit, self.host_->Context().palette.focusRing);
      return result;
    }
    case WM_NCDESTROY:
      RemoveWindowSubclass(edit, Procedure, kSubclass);
      if (edit == self.edit_) self.edit_ = nullptr;  // destroyed with its parent
      break;
    default:
      break;
  }
  return DefSubclassProc(edit, message, wParam, lParam);
}

}  // namespace quilmark
