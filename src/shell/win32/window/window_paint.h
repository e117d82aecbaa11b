// Paints the window: what stands behind the controls, and the rows in view.
#pragma once

#include "shell/win32/window/main_window.h"

namespace quilmark {

// Covers every pixel of the place. Reads state and changes none.
PaintOutcome PaintWindow(HDC dc, const MainWindow& window, const Rect& place);

}  // namespace quilmark
