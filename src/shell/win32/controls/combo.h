// Drop-down lists that are painted in the palette.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "canvas/rect.h"
#include "shell/win32/controls/control_host.h"

namespace quilmark {

// A hidden drop list without items. `host` outlives it. Null where the system makes none.
HWND MakeCombo(HWND parent, int id, ControlHost& host);

// Replaces the items and chooses one; an index past the end chooses the first.
void FillCombo(HWND combo, const std::vector<std::u16string>& items, int chosen);

// The row that is chosen, or -1.
int ChosenIn(HWND combo);

// Draws a row, or the closed field: the answer to WM_DRAWITEM.
void DrawComboItem(const DRAWITEMSTRUCT& item, const ControlHost& host);

// Says how high rows are: the answer to WM_MEASUREITEM.
void MeasureComboItem(MEASUREITEMSTRUCT& item, uint32_t dpi);

// Where a drop list stands.
struct ComboPlace {
  Rect field;
  int listWidth = 0;  // pixels at 96 dpi; 0: as wide as the field
  bool isShown = true;
};

// Moves, shows or hides it. An open list stays open where nothing changes.
void PlaceCombo(HWND combo, const ComboPlace& place, uint32_t dpi);

}  // namespace quilmark
