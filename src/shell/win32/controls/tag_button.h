// A button that the view paints.
#pragma once

#include <windows.h>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

HWND MakeTagButton(HWND parent, int id, ControlHost& host);

// On its own device context: the answer to WM_DRAWITEM.
void DrawTagButton(const DRAWITEMSTRUCT& item, const ControlHost& host);

}  // namespace quilmark
