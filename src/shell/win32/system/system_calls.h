// What the system says of scales, and takes for frames and privileges.
#pragma once

#include <windows.h>

#include <cstdint>

namespace quilmark {

// Enables a privilege of this process; one that cannot be had is passed over.
void EnableProcessPrivilege(const wchar_t* name);

// The dpi of the primary screen; 96 where the system does not say.
uint32_t DpiOfSystem();

// The dpi of the window's screen; that of the system where windows have none of their own.
uint32_t DpiOfWindow(HWND window);

// Makes frame and scrollbars of a window dark or light, where the system can.
void DarkenFrame(HWND window, bool dark);

// Colours of a title bar. 0xFFFFFFFF is the system's own.
struct FrameColors {
  bool dark = false;
  COLORREF caption = 0, text = 0;
};

// Gives a window's title bar those colours, where the system can.
void ColorFrame(HWND window, const FrameColors& colors);

}  // namespace quilmark
