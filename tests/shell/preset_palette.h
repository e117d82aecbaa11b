// The colours of a preset, as they are once a user has taken it.
#pragma once

#include "config/ui_colors.h"

namespace quilmark {

inline Palette PresetPalette(int index) {
  const UiColorPreset& preset = kUiColorPresetRows[static_cast<size_t>(index)];
  ColorOverrides overrides;
  overrides.overrideSet.fill(true);
  for (size_t role = 0; role < kColorRoles; ++role) {
    overrides.overrideColor[role] = ColorOfHex(preset.rrggbb[role]);
  }
  return WithOverrides(ThemeDefaults(preset.mode == 1), overrides);
}

}  // namespace quilmark
