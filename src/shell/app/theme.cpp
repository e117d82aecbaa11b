#include "shell/app/theme.h"

#include "config/palette.h"
#include "config/ui_colors.h"
#include "config/window_settings.h"

namespace quilmark {

namespace {

Palette WantedPalette(ThemePort& theme) {
  return PaletteInForce(CurrentWindowSettings.darkTheme, CurrentOverrides, theme.HighContrast());
}

}  // namespace

void ApplyTheme(ThemePort& theme) {
  CurrentPalette = WantedPalette(theme);
  theme.WearTheme(CurrentWindowSettings.darkTheme && !CurrentPalette.isSystem);
}

void RefreshColorsLive(ThemePort& theme) {
  CurrentPalette = WantedPalette(theme);
  theme.WearColors();
}

void FollowSystemColors(ThemePort& theme) {
  // Most changes of the system's settings do not change a colour.
  if (WantedPalette(theme) != CurrentPalette) ApplyTheme(theme);
}

void SwitchTheme(ThemePort& theme, WindowPort& window) {
  CurrentWindowSettings.darkTheme = !CurrentWindowSettings.darkTheme;
  ApplyTheme(theme);
  SaveWindowSettings(window.Placement());
}

void ApplyUiColorPreset(ThemePort& theme, WindowPort& window, int index) {
  if (!TakeUiColorPreset(index)) return;
  const int mode = kUiColorPresetRows[static_cast<size_t>(index)].mode;
  if (mode == 0 || mode == 1) CurrentWindowSettings.darkTheme = mode == 1;
  if (!theme.IsOpen()) {
    CurrentPalette = WantedPalette(theme);
    return;
  }
  ApplyTheme(theme);
  SaveWindowSettings(window.Placement());
}

}  // namespace quilmark
