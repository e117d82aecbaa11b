#include "shell/win32/controls/tag_button.h"

#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/gdi/gdi_canvas.h"

namespace quilmark {

namespace {

// The button itself keeps whether the mouse is over it.
bool IsHot(HWND tag) { return GetWindowLongPtrW(tag, GWLP_USERDATA) != 0; }

void SetHot(HWND tag, bool isHot) {
  SetWindowLongPtrW(tag, GWLP_USERDATA, isHot ? 1 : 0);
  InvalidateRect(tag, nullptr, FALSE);
}

void TellOfLeave(HWND tag) {
  TRACKMOUSEEVENT track = {};
  track.cbSize = sizeof track;
  track.dwFlags = TME_LEAVE;
  track.hwndTrack = tag;
  TrackMouseEvent(&track);
}

LRESULT CALLBACK TagProcedure(HWND tag, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                              DWORD_PTR) {
  if (TakeTabKey(tag, message, wParam)) return 0;
  switch (message) {
    case WM_ERASEBKGND:
      return 1;  // its paint covers all of it, and clearing it first would flicker
    case WM_MOUSEMOVE:
      if (IsHot(tag)) break;
      SetHot(tag, true);
      TellOfLeave(tag);
      break;
    case WM_MOUSELEAVE:
      SetHot(tag, false);
      break;
    case WM_SHOWWINDOW:
      if (wParam == FALSE) SetHot(tag, false);  // a hidden button gets no WM_MOUSELEAVE
      break;
    case WM_NCDESTROY:
      LetGo(tag, TagProcedure);
      break;
    default:
      break;
  }
  return DefSubclassProc(tag, message, wParam, lParam);
}

}  // namespace

HWND MakeTagButton(HWND parent, int id, ControlHost& host) {
  const HWND tag =
      MakeControl(parent, {L"BUTTON", WS_TABSTOP | BS_OWNERDRAW | BS_MULTILINE, WS_EX_COMPOSITED}, id,
                  host.Fonts().Of(FontRole::kFilter));
  TakeOver(tag, TagProcedure, host);
  return tag;
}

void DrawTagButton(const DRAWITEMSTRUCT& item, const ControlHost& host) {
  const Rect place = FromRECT(item.rcItem);
  GdiCanvas canvas(item.hDC, host.Fonts(), place);
  canvas.Fill(place, host.Context().palette.toolbar);
  host.PaintControl(canvas, {.id = static_cast<int>(item.CtlID),
                             .place = place,
                             .isHot = IsHot(item.hwndItem),
                             .hasFocus = (item.itemState & ODS_FOCUS) != 0});
}

}  // namespace quilmark
