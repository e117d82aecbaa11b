#include "shell/win32/controls/controls.h"

namespace quilmark {

namespace {

constexpr UINT_PTR kSubclass = 1;

}  // namespace

HWND MakeControl(HWND parent, const ControlClass& kind, int id, HFONT font) {
  const HWND control = CreateWindowExW(kind.extendedStyle, kind.name, L"", WS_CHILD | kind.style, 0, 0,
                                       10, 10, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                       GetModuleHandleW(nullptr), nullptr);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  return control;
}

void TakeOver(HWND control, SUBCLASSPROC procedure, ControlHost& host) {
  SetWindowSubclass(control, procedure, kSubclass, reinterpret_cast<DWORD_PTR>(&host));
}

void LetGo(HWND control, SUBCLASSPROC procedure) { RemoveWindowSubclass(control, procedure, kSubclass); }

HFONT FontOf(HWND control) { return reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)); }

ViewContext ContextOf(const ControlHost& host, HWND control) {
  ViewContext context = host.Context();
  context.client = FromRECT(ClientRectOf(control));
  context.hasFocus = GetFocus() == control;
  return context;
}

RECT ClientRectOf(HWND window) {
  RECT client = {};
  GetClientRect(window, &client);
  return client;
}

RECT RectInParent(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  MapWindowPoints(HWND_DESKTOP, GetParent(window), reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

bool IsShown(HWND control) { return (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0; }

bool HasFocusIn(HWND control) {
  const HWND focus = GetFocus();
  return focus != nullptr && (focus == control || IsChild(control, focus));
}

bool MoveControl(HWND control, const Rect& rect, bool isShown) {
  if (FromRECT(RectInParent(control)) == rect && IsShown(control) == isShown) return false;
  SetWindowPos(control, nullptr, rect.left, rect.top, Width(rect), Height(rect),
               SWP_NOZORDER | SWP_NOACTIVATE | (isShown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  return true;
}

void FillClient(HWND window, HDC dc, Color color) { FillWith(dc, ClientRectOf(window), color); }

Color FrameColorOf(const ViewContext& context) {
  return context.hasFocus ? context.palette.focusRing : context.palette.border;
}

void FrameClient(HWND control, Color color) {
  const WindowDc dc(control);
  FrameWith(dc.Get(), ClientRectOf(control), color);
}

}  // namespace quilmark
