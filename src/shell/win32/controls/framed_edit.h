// A one-line edit with a plain frame.
#pragma once

#include <windows.h>

#include <cstddef>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

// A hidden edit that takes `longest` units. `host` outlives it. Null where the system makes none.
HWND MakeFramedEdit(HWND parent, int id, size_t longest, ControlHost& host);

}  // namespace quilmark
