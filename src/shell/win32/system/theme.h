// The colours in force and the window that shows them. Interface thread.
#pragma once

#include <optional>

#include "config/system_palette.h"
#include "shell/win32/window/main_window.h"

namespace quilmark {

// Everything that hangs on the theme: palette, brushes, fonts, title bar, controls; then all is
// repainted.
void ApplyTheme(MainWindow& window);

// The palette and its brushes alone, at once: while a colour is being dragged.
void RefreshColorsLive(MainWindow& window);

// The system's colours while it asks for high contrast. The program of the window tests puts its own
// answer here.
extern std::optional<SystemColors> (*readHighContrast)();

// Takes the palette again where the system's colours, or its wish for contrast, have changed.
void FollowSystemColors(MainWindow& window);

// Flips between the light and the dark theme, and keeps the choice.
void SwitchTheme(MainWindow& window);

// Takes all colours, and the theme, of a preset. Nothing for an index that has none.
void ApplyUiColorPreset(MainWindow& window, int index);

}  // namespace quilmark
