#include "shell/win32/theme.h"

#include "config/palette.h"
#include "config/ui_colors.h"
#include "config/window_settings.h"
#include "shell/win32/system_calls.h"

namespace quilmark {

namespace {

void TakePalette(MainWindow& window) {
  ApplyThemeDefaults(CurrentWindowSettings.darkTheme);
  ApplyColorOverrides();
  window.brushes = MakeBrushes();
}

void RepaintAll(const MainWindow& window) {
  RedrawWindow(window.Handle(), nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

}  // namespace

void ApplyTheme(MainWindow& window) {
  TakePalette(window);
  window.RemakeFonts();
  if (App().clientWidth > 0) window.PlaceControls();  // a combo box takes its height from its font
  const bool dark = CurrentWindowSettings.darkTheme;
  ColorFrame(window.Handle(), {.dark = dark,
                               .caption = dark ? CurrentPalette.surface : CurrentPalette.toolbar,
                               .text = CurrentPalette.text});
  RepaintAll(window);
}

void RefreshColorsLive(MainWindow& window) {
  TakePalette(window);
  RepaintAll(window);
}

void SwitchTheme(MainWindow& window) {
  CurrentWindowSettings.darkTheme = !CurrentWindowSettings.darkTheme;
  ApplyTheme(window);
  SaveWindowSettings(window.Placement());
}

void ApplyUiColorPreset(MainWindow& window, int index) {
  if (!TakeUiColorPreset(index)) return;
  const int mode = kUiColorPresetRows[static_cast<size_t>(index)].mode;
  if (mode == 0 || mode == 1) CurrentWindowSettings.darkTheme = mode == 1;
  if (!IsWindow(window.Handle())) return TakePalette(window);
  ApplyTheme(window);
  SaveWindowSettings(window.Placement());
}

}  // namespace quilmark
