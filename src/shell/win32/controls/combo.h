// Drop-down lists that are painted in the palette.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "canvas/rect.h"

namespace quilmark {

HWND MakeCombo(HWND parent, int id, HFONT font);

// Replaces the items and chooses one; an index past the end chooses the first.
void FillCombo(HWND combo, const std::vector<std::u16string>& items, int chosen);

// True if `id` is one of these.
bool IsCustomCombo(UINT id);

void DrawComboItem(const DRAWITEMSTRUCT& item);

// Its field; an open list stays open where nothing changes.
void PlaceCombo(HWND combo, const Rect& field, bool isShown);

}  // namespace quilmark
