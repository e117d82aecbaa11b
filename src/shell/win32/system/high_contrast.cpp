#include "shell/win32/system/high_contrast.h"

#include <windows.h>

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

}  // namespace quilmark
