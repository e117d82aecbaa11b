// The colours in force and the window that shows them. Interface thread.
#pragma once

#include "shell/win32/main_window.h"

namespace quilmark {

// Everything that hangs on the theme: palette, brushes, fonts, title bar, controls; then all is
// repainted.
void ApplyTheme(MainWindow& window);

// The palette and its brushes alone, at once: while a colour is being dragged.
void RefreshColorsLive(MainWindow& window);

// Flips between the light and the dark theme, and keeps the choice.
void SwitchTheme(MainWindow& window);

// Takes all colours, and the theme, of a preset. Nothing for an index that has none.
void ApplyUiColorPreset(MainWindow& window, int index);

}  // namespace quilmark
