// A search box: an edit with a rounded frame that reports Enter and Escape.
#pragma once

#include <windows.h>

#include <cstddef>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

// A hidden search box that takes `longest` units. `host` outlives it. Null where the system makes none.
HWND MakeSearchBox(HWND parent, int id, size_t longest, ControlHost& host);

}  // namespace quilmark
