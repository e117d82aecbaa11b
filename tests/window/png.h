// Pictures of the screen.
#pragma once

#include <windows.h>

#include <string>

namespace quilmark {

// The place of `window` on the screen, with its frame, whatever covers it; the whole screen for null.
bool SaveScreenAsPng(HWND window, const std::wstring& path);

}  // namespace quilmark
