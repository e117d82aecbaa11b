// Drop-down lists that are painted in the palette.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "canvas/rect.h"
#include "shell/win32/controls/control_host.h"

namespace quilmark {

HWND MakeCombo(HWND parent, int id, ControlHost& host);

// Replaces the items and chooses one; an index past the end chooses the first.
void FillCombo(HWND combo, const std::vector<std::u16string>& items, int chosen);

int ChosenIn(HWND combo);  // a row, or -1

// The answers to WM_DRAWITEM and WM_MEASUREITEM.
void DrawComboItem(const DRAWITEMSTRUCT& item, const ControlHost& host);
void MeasureComboItem(MEASUREITEMSTRUCT& item, uint32_t dpi);

struct ComboPlace {
  Rect field;
  int listWidth = 0;  // pixels at 96 dpi; 0: as the field's
  bool isShown = true;
};
// An open list stays open where nothing changes.
void PlaceCombo(HWND combo, const ComboPlace& place, uint32_t dpi);

}  // namespace quilmark
