// Paints the window: what stands behind the controls, and the rows in view.
#pragma once

#include "shell/win32/main_window.h"

namespace quilmark {

// Covers every pixel of the client area. Reads state and changes none. True if attributes of a row in
// view are not known yet.
bool PaintWindow(HDC dc, const MainWindow& window);

}  // namespace quilmark
