#include "shell/win32/controls/controls.h"

#include "config/palette.h"
#include "shell/app/app_state.h"
#include "shell/win32/gdi/gdi_fonts.h"

namespace quilmark {

int Scaled(int n) { return ScaleFor(App().systemDpi, n); }

HWND MakeControl(HWND parent, const ControlKind& kind, HFONT font) {
  const HWND control = CreateWindowExW(0, kind.className, L"", WS_CHILD | kind.style, 0, 0, 10, 10,
                                       parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kind.id)),
                                       GetModuleHandleW(nullptr), nullptr);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  return control;
}

HFONT FontOf(HWND control) { return reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)); }

ViewContext ContextOf(HWND control) {
  return {.dpi = App().systemDpi,
          .client = FromRECT(ClientRectOf(control)),
          .palette = CurrentPalette,
          .fonts = CurrentFonts(),
          .hasFocus = GetFocus() == control};
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

void FillClient(HWND window, HDC dc, Color color) { FillWith(dc, ClientRectOf(window), color); }

Color FrameColorOf(HWND control) {
  return GetFocus() == control ? CurrentPalette.focusRing : CurrentPalette.border;
}

void FrameClient(HWND control, Color color) {
  const WindowDc dc(control);
  FrameWith(dc.Get(), ClientRectOf(control), color);
}

}  // namespace quilmark
