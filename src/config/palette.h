// Colours of everything that is drawn: light and dark defaults, overrides of ten roles, derived entries.
//
// Interface thread only.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quilmark {

using Color = uint32_t;  // COLORREF: red in the low byte, blue in the third, the fourth 0

// The colour that is written RRGGBB.
constexpr Color ColorOfHex(uint32_t rrggbb) {
  return (rrggbb & 0xFF) << 16 | (rrggbb & 0xFF00) | (rrggbb >> 16 & 0xFF);
}

// The red of a colour, 0 to 255.
constexpr int RedOf(Color color) { return static_cast<int>(color & 0xFF); }

// Its green, 0 to 255.
constexpr int GreenOf(Color color) { return static_cast<int>(color >> 8 & 0xFF); }

// Its blue, 0 to 255.
constexpr int BlueOf(Color color) { return static_cast<int>(color >> 16 & 0xFF); }

// A colour for everything that is drawn.
struct Palette {
  // What a user may override.
  Color surface = 0, toolbar = 0, editWell = 0, text = 0, textHit = 0, searchHit = 0, header = 0,
        rowSel = 0, accent = 0, border = 0;
  // What follows from the theme, and from some of the above.
  Color cardBackground = 0, windowFrame = 0, alternateRow = 0, controlBackground = 0, separator = 0,
        muted = 0, mutedFixed = 0, accentStrong = 0, accentSoft = 0, focusRing = 0, headerBackground = 0,
        panelBackground = 0, tabBackground = 0, buttonBorder = 0;
  Color rowSelText = 0, accentText = 0;  // letters on rowSel and on accent
  bool isSystem = false;                 // colours of the system, to be used as they are

  bool operator==(const Palette&) const = default;
};

// Entries that a user may override.
inline constexpr size_t kColorRoles = 10;

// One of them.
struct UiColorRole {
  std::u16string_view key;    // in ui_colors.ini, and of the label's translation
  std::u16string_view label;  // in English
  Color Palette::*entry;
};

// All of them. ColorOverrides and the presets go by their order.
extern const std::array<UiColorRole, kColorRoles> kUiColorRoles;

// What the user chose, by the order of kUiColorRoles. A colour counts where it is set.
struct ColorOverrides {
  std::array<Color, kColorRoles> overrideColor = {};
  std::array<bool, kColorRoles> overrideSet = {};

  bool operator==(const ColorOverrides&) const = default;
};

// Each channel by itself, rounded down: `percent` of a, the rest of b.
Color MixColor(Color a, Color b, int percent);

// 0 (black) to 255 (white), weighted as the eye does.
int Luminance(Color color);

// `background`, or a shade of `color` or of `neighbour` where a highlight on it would be lost beside
// them.
Color AdjustHighlightContrast(Color color, Color background, Color neighbour);

// Six hexadecimal digits, with or without "#" and blanks around; empty for anything else.
[[nodiscard]] std::optional<Color> ParseHexColor(std::u16string_view text);

// RRGGBB in capital letters, as ParseHexColor reads it.
std::u16string HexColorText(Color color);

// The colours of the light or the dark theme with nothing overridden.
Palette ThemeDefaults(bool dark);

// `palette` with the colours that are set in `overrides`, and with what follows from them. Whether the
// derived entries are dark or light follows from the surface, not from the theme.
Palette WithOverrides(Palette palette, const ColorOverrides& overrides);

// The colours in force.
extern Palette CurrentPalette;

// What the user chose; in force once ApplyColorOverrides was called.
extern ColorOverrides CurrentOverrides;

// Sets CurrentPalette to ThemeDefaults(dark). The overrides are no longer in force.
void ApplyThemeDefaults(bool dark);

// Puts CurrentOverrides into CurrentPalette.
void ApplyColorOverrides();

}  // namespace quilmark
