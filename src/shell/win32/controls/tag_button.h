// A button that the view paints.
#pragma once

#include <windows.h>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

// A hidden button. `host` outlives it. Null where the system makes none.
HWND MakeTagButton(HWND parent, int id, ControlHost& host);

// Has the view paint the button on the device context of the item: the answer to WM_DRAWITEM.
void DrawTagButton(const DRAWITEMSTRUCT& item, const ControlHost& host);

}  // namespace quilmark
