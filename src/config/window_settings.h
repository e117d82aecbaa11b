// window.ini: size, columns, filters, theme and the settings of a content search.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace quilmark {

// What the user chose, but for the size of the window.
struct WindowSettings {
  std::array<int, 6> columnWidth = {60,  280, 100,
                                    160, 160, 400};  // see where a value of this type is kept
  int sizePreset = 0;                                // 0 to 4
  int timePreset = 0;                                // 0 to 4
  int sizeUnit = 2;                                  // 0 to 3
  std::u16string sizeRange;                          // text of the size box
  int timeStart = 0;                                 // year * 10,000 + month * 100 + day; 0: none
  int timeEnd = 0;
  bool sidebarLayout = false;  // else the filters stand in a bar at the top
  bool darkTheme = false;
  bool initialSearchEnabled = true;  // a query finds names by the initials of ideographs
  int viewMode = 0;                  // 0 to 2
  bool globalTrimOnToggle = false;
  bool tableGridLines = true;
  int contentMaxFileSizeMB = 100;  // 0: no limit
  int contentSearchThreads = 0;    // 0: chosen by the program
  std::vector<std::u16string> contentSearchExts;

  bool operator==(const WindowSettings&) const = default;
};

// In pixels. Whatever takes or gives one tells at which scale.
struct WindowSize {
  int width = 0;
  int height = 0;

  bool operator==(const WindowSize&) const = default;
};

// What only the window knows at the time of a save.
struct WindowPlacement {
  WindowSize restored;                           // pixels; the size when neither maximised nor minimised
  int dpi = 96;                                  // 0 counts as 96
  std::optional<std::u16string> sizeRange = {};  // text of the size box, if the box exists
  std::optional<int> timeStart = {};             // if the picker exists and holds a date
  std::optional<int> timeEnd = {};
};

// The settings in force, with columns in pixels of the window's screen. Interface thread.
extern WindowSettings CurrentWindowSettings;

// Takes over what a file's text says and keeps the rest, also where a value is out of its range. Pixels
// at 96 dpi.
void ReadWindowSettings(std::u16string_view text, WindowSize& size, WindowSettings& settings);

// The text of the file for settings with columns in pixels of the placement's screen.
std::u16string WindowSettingsText(const WindowSettings& settings, const WindowPlacement& placement);

// Sets CurrentWindowSettings from the file in the configuration directory, or to the defaults without a
// file, and gives the size of the window, or `usual` where the file names none. `usual` is at 96 dpi,
// all else scaled to `dpi` (0 counts as 96).
[[nodiscard]] WindowSize LoadWindowSettings(WindowSize usual, int dpi);

// Writes the file from CurrentWindowSettings. Does nothing without a placement: no window, or one that
// gives none. A failed save is ignored.
void SaveWindowSettings(const std::optional<WindowPlacement>& placement,
                        Flushing flushing = Flushing::kWaited);

}  // namespace quilmark
