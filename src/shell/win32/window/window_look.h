// Brushes of the main window, made again when the colours change.
#pragma once

#include "shell/win32/gdi/gdi.h"

namespace quilmark {

struct WindowBrushes {
  UniqueBrush well;         // inside the search box
  UniqueBrush scrollTrack;  // made on first use
};
WindowBrushes MakeBrushes();  // from CurrentPalette

}  // namespace quilmark
