// The box that says where a search looks.
#pragma once

#include <windows.h>

#include <cstdint>

namespace quilmark {

HWND MakeScopeBox(HWND parent, HFONT font);

// All drives, the desktop, each volume; the choice stays where it still exists.
void FillScopeBox(HWND box);

void DrawScopeItem(const DRAWITEMSTRUCT& item);

void SetComboItemHeights(HWND combo, uint32_t dpi);

// Makes the closed control as high as wanted, which its own arithmetic does not give.
void FitComboHeight(HWND combo, int height);

}  // namespace quilmark
