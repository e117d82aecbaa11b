// Which colours of the palette the list is drawn in, so that all of it can be read.
#pragma once

#include "config/palette.h"

namespace quilmark {

struct RowColors {
  Color ground = 0;
  Color text = 0;
  Color muted = 0;  // all cells but the name
  Color hit = 0, hitText = 0;
  Color folder = 0, file = 0;  // of their glyphs
};

struct ListColors {
  RowColors plain, hovered, selected;
  Color band = 0, bandText = 0;  // of the header
  Color panel = 0;               // of the sidebar
  Color status = 0;              // letters on the bar
};

// As they stand while the system asks for high contrast: then none of its colours is mixed.
// Cheap while the palette stays the same.
ListColors ListColorsOf(const Palette& palette);

}  // namespace quilmark
