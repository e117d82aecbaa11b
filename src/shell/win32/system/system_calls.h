// What the system says of scales, and takes for frames and privileges.
#pragma once

#include <windows.h>

#include <cstdint>

namespace quilmark {

// For this process; one that cannot be had is passed over.
void EnableProcessPrivilege(const wchar_t* name);

uint32_t DpiOfSystem();
uint32_t DpiOfWindow(HWND window);  // that of the system where windows have none of their own

// Frame and scrollbars of a window, where the system can draw them dark.
void DarkenFrame(HWND window, bool dark);

// Title bar of a window.
struct FrameColors {
  bool dark = false;
  COLORREF caption = 0, text = 0;
};
void ColorFrame(HWND window, const FrameColors& colors);

}  // namespace quilmark
