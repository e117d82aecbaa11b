// Paints the window: what stands behind the controls, and the rows in view.
#pragma once

#include "shell/win32/window/main_window.h"

namespace quilmark {

// Paints `place` of the client area on `dc`, every pixel of it. Reads state and changes none. Returns
// what the shown view could not show yet.
PaintOutcome PaintWindow(HDC dc, const MainWindow& window, const Rect& place);

}  // namespace quilmark
