// ui_colors.ini: the colours that the user chose, and the presets to choose from. Interface thread.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "config/palette.h"

namespace quilmark {

// Colours that belong together, for a user to choose as a whole.
struct UiColorPreset {
  std::u16string_view chineseName, englishName;
  int mode = 0;                                   // 0 light, 1 dark; anything else leaves the theme
  std::array<uint32_t, kColorRoles> rrggbb = {};  // in the order of the roles
};

// All of them, by the index of TakeUiColorPreset.
inline constexpr int kUiColorPresets = 10;
extern const std::array<UiColorPreset, kUiColorPresets> kUiColorPresetRows;

// Index of the preset that the user took last; -1: none since the start of the program or the latest
// ResetUiColors. It is not kept between runs.
extern int activePreset;

// The overrides of a file's text: one "key=RRGGBB" a line, keys in any case; lines that do not fit are
// ignored.
ColorOverrides ReadUiColors(std::u16string_view text);

// The text of the file for `overrides`: what ReadUiColors reads back.
std::u16string UiColorsText(const ColorOverrides& overrides);

// Sets CurrentOverrides from the file in the configuration directory; without a file nothing is
// overridden. The palette stays as it is until ApplyColorOverrides.
void LoadUiColors();

// Writes CurrentOverrides to that file. A save that fails is lost.
void SaveUiColors();

// Takes all overrides back, sets activePreset to -1 and saves. The palette stays as it is until
// ApplyThemeDefaults.
void ResetUiColors();

// Overrides every role by a preset, sets activePreset and saves. The palette stays as it is until
// ApplyColorOverrides. False, with nothing changed, for an index that has no preset. `mode` of the
// preset is the caller's to follow.
[[nodiscard]] bool TakeUiColorPreset(int index);

}  // namespace quilmark
