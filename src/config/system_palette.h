// The palette while the system asks for high contrast: its own colours, and none of ours.
#pragma once

#include <optional>

#include "config/palette.h"

namespace quilmark {

// The colours of the system, by the names of GetSysColor.
struct SystemColors {
  Color window = 0, windowText = 0, highlight = 0, highlightText = 0, buttonFace = 0, grayText = 0,
        hotLight = 0;

  bool operator==(const SystemColors&) const = default;
};

// A palette of these colours and no others.
Palette SystemPalette(const SystemColors& colors);

// The system's colours where it asks for them, else the theme with the user's overrides.
Palette PaletteInForce(bool dark, const ColorOverrides& overrides,
                       const std::optional<SystemColors>& system);

}  // namespace quilmark
