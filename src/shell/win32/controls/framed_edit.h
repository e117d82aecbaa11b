// A one-line edit with a plain frame.
#pragma once

#include <windows.h>

#include <cstddef>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

HWND MakeFramedEdit(HWND parent, int id, size_t longest, ControlHost& host);

}  // namespace quilmark
