// Which colours of the palette the list is drawn in, so that all of it can be read.
#pragma once

#include "config/palette.h"

namespace quilmark {

// Colours of a row.
struct RowColors {
  Color ground = 0;
  Color text = 0;
  Color muted = 0;  // all cells but the name
  Color hit = 0, hitText = 0;
};

// Colours of the list and of what stands around it.
struct ListColors {
  RowColors plain, hovered, selected;
  Color band = 0, bandText = 0;  // of the header
  Color panel = 0;               // of the sidebar
  Color status = 0;              // of the letters of the status line
};

// The colours of the list in a palette. A palette of the system, at high contrast, is taken as it is;
// from any other colours are mixed so that all letters can be read. Cheap while a thread asks for one
// palette again and again.
ListColors ListColorsOf(const Palette& palette);

}  // namespace quilmark
