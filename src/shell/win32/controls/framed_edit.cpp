#include "shell/win32/controls/framed_edit.h"

#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/controls/edit_line.h"

namespace quilmark {

namespace {

LRESULT CALLBACK FramedProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR reference) {
  if (const auto taken = TakeEditMessage(edit, message, wParam, lParam)) return *taken;
  if (message == WM_KEYDOWN && wParam == VK_RETURN) {
    HostOf(reference).OnControl(
        {.kind = ControlEvent::kEnter, .id = GetDlgCtrlID(edit), .text = TextOfEdit(edit)});
    return 0;  // it has one line
  }
  if (message == WM_NCDESTROY) LetGo(edit, FramedProcedure);
  const LRESULT result = DefSubclassProc(edit, message, wParam, lParam);
  if (message == WM_PAINT) FrameClient(edit, FrameColorOf(ContextOf(HostOf(reference), edit)));
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS) InvalidateRect(edit, nullptr, FALSE);
  return result;
}

}  // namespace

HWND MakeFramedEdit(HWND parent, int id, size_t longest, ControlHost& host) {
  const HWND edit = MakeEdit(parent, id, WS_TABSTOP, longest, host.Fonts().Of(FontRole::kMain));
  TakeOver(edit, FramedProcedure, host);
  return edit;
}

}  // namespace quilmark
