// Steps that the controls share, which are those of the system with a paint of ours.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "shell/win32/controls/control_host.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

struct ControlClass {
  const wchar_t* name;
  DWORD style;  // beside WS_CHILD
  DWORD extendedStyle = 0;
};
// A hidden child without a place of its own yet, and without a text.
HWND MakeControl(HWND parent, const ControlClass& kind, int id, HFONT font);

// Each control has one procedure of ours, which knows its host by its reference data. It removes itself
// with WM_NCDESTROY.
void TakeOver(HWND control, SUBCLASSPROC procedure, ControlHost& host);
void LetGo(HWND control, SUBCLASSPROC procedure);
inline ControlHost& HostOf(DWORD_PTR reference) { return *reinterpret_cast<ControlHost*>(reference); }

HFONT FontOf(HWND control);

// The host's, with client area and focus of the control.
ViewContext ContextOf(const ControlHost& host, HWND control);

RECT ClientRectOf(HWND window);

// In the coordinates of its parent.
RECT RectInParent(HWND window);

// True for a control that would be seen in a window that is on show.
bool IsShown(HWND control);

bool HasFocusIn(HWND control);  // itself, or a part of it

// Moves, shows or hides it. True if there was something to do.
bool MoveControl(HWND control, const Rect& rect, bool isShown);

// The whole client area: the answer to WM_ERASEBKGND.
void FillClient(HWND window, HDC dc, Color color);

// Of the frame around a control, which tells whether it has the focus.
Color FrameColorOf(const ViewContext& context);

// A line of one pixel just inside the client area, drawn past the control's own paint.
void FrameClient(HWND control, Color color);

}  // namespace quilmark
