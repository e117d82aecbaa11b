// What the controls share: they are those of the system, and painted here.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "shell/win32/controls/control_host.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

// A window class of the system, and the styles of one control.
struct ControlClass {
  const wchar_t* name;
  DWORD style;  // beside WS_CHILD
  DWORD extendedStyle = 0;
};

// Makes a hidden child without a place and a text. Null where the system makes none.
HWND MakeControl(HWND parent, const ControlClass& kind, int id, HFONT font);

// Puts `procedure` before the control's own; its reference data names the host. The procedure takes
// itself off with WM_NCDESTROY, by LetGo.
void TakeOver(HWND control, SUBCLASSPROC procedure, ControlHost& host);

// Takes the procedure off.
void LetGo(HWND control, SUBCLASSPROC procedure);

// The host that TakeOver has put into the reference data.
inline ControlHost& HostOf(DWORD_PTR reference) { return *reinterpret_cast<ControlHost*>(reference); }

// The font that a control draws with; null for the system's own. The control does not own it.
HFONT FontOf(HWND control);

// The host's context, but with client area and focus of the control.
ViewContext ContextOf(const ControlHost& host, HWND control);

// The client area in its own coordinates; empty for a window that is gone.
RECT ClientRectOf(HWND window);

// The place of a window in the client area of its parent.
RECT RectInParent(HWND window);

// True for a control that is not hidden itself, whether its window is seen or not.
bool IsShown(HWND control);

// True if the control, or a window within it, has the focus.
bool HasFocusIn(HWND control);

// Moves, shows or hides a control. False where nothing had to be done.
bool MoveControl(HWND control, const Rect& rect, bool isShown);

// Fills the whole client area: for WM_ERASEBKGND.
void FillClient(HWND window, HDC dc, Color color);

// The colour of the frame around a control; it tells whether the control has the focus.
Color FrameColorOf(const ViewContext& context);

// Draws a line of one pixel just inside the client area, on a device context of its own: after the paint
// of the control.
void FrameClient(HWND control, Color color);

}  // namespace quilmark
