// The colours in force, and the window that shows them. Interface thread.
#pragma once

#include <optional>

#include "config/system_palette.h"
#include "shell/view/window_port.h"

namespace quilmark {

// What of it only the window itself can do.
struct ThemePort {
  virtual ~ThemePort() = default;
  virtual bool IsOpen() = 0;
  virtual std::optional<SystemColors> HighContrast() = 0;  // while the system asks for it
  // Everything that hangs on the theme, from CurrentPalette: brushes, fonts, title bar, controls; then
  // all is repainted. `isDark`: so are scrollbars, frames and the title bar of the system.
  virtual void WearTheme(bool isDark) = 0;
  virtual void WearColors() = 0;  // the brushes alone, and all is repainted
};

// Takes the palette that the settings and the system want, and everything that hangs on it.
void ApplyTheme(ThemePort& theme);

// The palette and its brushes alone, at once: while a colour is being dragged.
void RefreshColorsLive(ThemePort& theme);

// Takes the palette again where the system's colours, or its wish for contrast, have changed.
void FollowSystemColors(ThemePort& theme);

// Flips between the light and the dark theme, and keeps the choice.
void SwitchTheme(ThemePort& theme, WindowPort& window);

// Takes all colours, and the theme, of a preset. Nothing for an index that has none.
void ApplyUiColorPreset(ThemePort& theme, WindowPort& window, int index);

}  // namespace quilmark
