// Drop-down lists that are painted in the palette.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace quilmark {

HWND MakeCombo(HWND parent, int id, HFONT font);

// Replaces the items and chooses one; an index past the end chooses the first.
void FillCombo(HWND combo, const std::vector<std::u16string>& items, int chosen);

// True if `id` is one of these.
bool IsCustomCombo(UINT id);

void DrawComboItem(const DRAWITEMSTRUCT& item);

// And the width of the drop list, at the scale of the window.
void SetComboItemHeights(HWND combo, uint32_t dpi);

// Makes the closed control as high as wanted, which its own arithmetic does not give.
void FitComboHeight(HWND combo, int height);

}  // namespace quilmark
