// ui_colors.ini: the colours that the user chose, and the presets to choose from. Interface thread.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "config/palette.h"

namespace quilmark {

struct UiColorPreset {
  std::u16string_view chineseName, englishName;
  int mode = 0;                                   // 0 light, 1 dark; anything else leaves the theme
  std::array<uint32_t, kColorRoles> rrggbb = {};  // in the order of the roles
};
inline constexpr int kUiColorPresets = 10;
extern const std::array<UiColorPreset, kUiColorPresets> kUiColorPresetRows;

extern int activePreset;  // -1: none; not kept between runs

// The overrides of a file's text: one "key=RRGGBB" a line, keys in any case; lines that do not fit are
// ignored.
ColorOverrides ReadUiColors(std::u16string_view text);
std::u16string UiColorsText(const ColorOverrides& overrides);

// From and to the file in the configuration directory. Without a file nothing is overridden; a failed
// save is ignored. The palette stays as it is until ApplyColorOverrides.
void LoadUiColors();
void SaveUiColors();
void ResetUiColors();

// Overrides every role by a preset and saves. False for an index that has no preset. `mode` of the
// preset is the caller's to follow.
bool TakeUiColorPreset(int index);

}  // namespace quilmark
