// The colours in force, and the window that shows them. Interface thread.
#pragma once

#include <optional>

#include "config/system_palette.h"
#include "shell/view/window_port.h"

namespace quilmark {

// What of a change of colours only the window itself can do.
struct ThemePort {
  virtual ~ThemePort() = default;

  // True once the window is made, until it is destroyed.
  virtual bool IsOpen() = 0;

  // The colours of the system while it asks for high contrast, else empty.
  virtual std::optional<SystemColors> HighContrast() = 0;

  // Makes anew all that depends on the theme, from CurrentPalette: brushes, fonts, title bar, controls.
  // Then repaints all. `isDark` is what scrollbars, frames and title bar of the system are to be.
  virtual void WearTheme(bool isDark) = 0;

  // Makes the brushes alone anew, and repaints all.
  virtual void WearColors() = 0;
};

// Takes the palette that the settings and the system ask for, and makes anew all that depends on it.
void ApplyTheme(ThemePort& theme);

// Takes the palette and its brushes alone, at once: while a colour is being dragged.
void RefreshColorsLive(ThemePort& theme);

// Takes the palette again where the system's colours, or its wish for contrast, have changed.
void FollowSystemColors(ThemePort& theme);

// Flips between the light and the dark theme, and saves the choice.
void SwitchTheme(ThemePort& theme, WindowPort& window);

// Takes all colours, and the theme, of a preset. Does nothing for an index without one.
void ApplyUiColorPreset(ThemePort& theme, WindowPort& window, int index);

}  // namespace quilmark
