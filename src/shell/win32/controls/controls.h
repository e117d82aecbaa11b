// Steps that the window's controls share, which are those of the system with a paint of ours.
#pragma once

#include "shell/view/view_context.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

// Pixels for `n` pixels at 96 dpi, at the window's scale.
int Scaled(int n);

struct ControlKind {
  const wchar_t* className;
  DWORD style;  // beside WS_CHILD
  int id;
};
// A child without a place of its own yet, and without a text.
HWND MakeControl(HWND parent, const ControlKind& kind, HFONT font);

HFONT FontOf(HWND control);

// For painting a control of ours.
ViewContext ContextOf(HWND control);

RECT ClientRectOf(HWND window);

// In the coordinates of its parent.
RECT RectInParent(HWND window);

// The whole client area: the answer to WM_ERASEBKGND.
void FillClient(HWND window, HDC dc, Color color);

// Of the frame around a control, which tells whether it has the focus.
Color FrameColorOf(HWND control);

// A line of one pixel just inside the client area, drawn past the control's own paint.
void FrameClient(HWND control, Color color);

}  // namespace quilmark
