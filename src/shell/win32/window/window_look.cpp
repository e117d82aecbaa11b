#include "shell/win32/window/window_look.h"

#include "config/palette.h"

namespace quilmark {

WindowBrushes MakeBrushes() {
  WindowBrushes brushes;
  brushes.well.Reset(CreateSolidBrush(CurrentPalette.editWell));
  return brushes;
}

}  // namespace quilmark
