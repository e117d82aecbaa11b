#include "shell/win32/system/theme.h"

#include "config/palette.h"
#include "config/ui_colors.h"
#include "config/window_settings.h"
#include "shell/win32/system/system_calls.h"

namespace quilmark {

namespace {

std::optional<SystemColors> ReadHighContrast() {
  HIGHCONTRASTW contrast = {};
  contrast.cbSize = sizeof contrast;
  if (!SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0)) return std::nullopt;
  if ((contrast.dwFlags & HCF_HIGHCONTRASTON) == 0) return std::nullopt;
  return SystemColors{.window = GetSysColor(COLOR_WINDOW),
                      .windowText = GetSysColor(COLOR_WINDOWTEXT),
                      .highlight = GetSysColor(COLOR_HIGHLIGHT),
                      .highlightText = GetSysColor(COLOR_HIGHLIGHTTEXT),
                      .buttonFace = GetSysColor(COLOR_BTNFACE),
                      .grayText = GetSysColor(COLOR_GRAYTEXT),
                      .hotLight = GetSysColor(COLOR_HOTLIGHT)};
}

}  // namespace

std::optional<SystemColors> (*readHighContrast)() = ReadHighContrast;

namespace {

Palette WantedPalette() {
  return PaletteInForce(CurrentWindowSettings.darkTheme, CurrentOverrides, readHighContrast());
}

void TakePalette(MainWindow& window) {
  CurrentPalette = WantedPalette();
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
  if (CurrentPalette.isSystem) {
    constexpr COLORREF kOfTheSystem = 0xFFFFFFFF;
    ColorFrame(window.Handle(), {.dark = false, .caption = kOfTheSystem, .text = kOfTheSystem});
  } else {
    ColorFrame(window.Handle(), {.dark = dark,
                                 .caption = dark ? CurrentPalette.surface : CurrentPalette.toolbar,
                                 .text = CurrentPalette.text});
  }
  RepaintAll(window);
}

void FollowSystemColors(MainWindow& window) {
  // Most changes of settings are none of colours.
  if (WantedPalette() != CurrentPalette) ApplyTheme(window);
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
