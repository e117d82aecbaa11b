// Fonts and brushes of the main window, made again when the scale or the colours change.
#pragma once

#include "shell/win32/gdi.h"

namespace quilmark {

struct WindowFonts {
  UniqueFont main, list, header, title, filter, small;
};
WindowFonts MakeFonts(uint32_t dpi, bool chinese);

struct WindowBrushes {
  UniqueBrush well;         // inside the search box
  UniqueBrush scrollTrack;  // made on first use
};
WindowBrushes MakeBrushes();  // from CurrentPalette

}  // namespace quilmark
