// Functions that not every Windows has, or whose library must come from the system's own folder.
#pragma once

#include <windows.h>

#include <cstdint>

namespace quilmark {

// Searches libraries in the system's folder alone, from here on.
void HardenLibrarySearch();

// Of a library in the system's folder, loaded if need be; null without it.
FARPROC SystemFunction(const wchar_t* library, const char* name);

template <typename Function>
Function SystemCall(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(SystemFunction(library, name)));
}

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
