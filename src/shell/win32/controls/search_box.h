// A search box: an edit with a rounded frame, of which Enter and Escape are told.
#pragma once

#include <windows.h>

#include <cstddef>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

HWND MakeSearchBox(HWND parent, int id, size_t longest, ControlHost& host);

}  // namespace quilmark
