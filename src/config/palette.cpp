#include "config/palette.h"

#include <cstdlib>

#include "config/contrast.h"
#include "platform/format.h"
#include "platform/text_file.h"

namespace quilmark {

const std::array<UiColorRole, kColorRoles> kUiColorRoles = {{
    {u"surface", u"Window background", &Palette::surface},
    {u"toolbar", u"Toolbar background", &Palette::toolbar},
    {u"editWell", u"Search box background", &Palette::editWell},
    {u"text", u"Main text", &Palette::text},
    {u"textHit", u"Search hit text", &Palette::textHit},
    {u"searchHit", u"Search hit background", &Palette::searchHit},
    {u"header", u"Table header text", &Palette::header},
    {u"rowSel", u"Selected table row", &Palette::rowSel},
    {u"accent", u"Accent", &Palette::accent},
    {u"border", u"Border", &Palette::border},
}};

ColorOverrides CurrentOverrides;

namespace {

struct DefaultRow {
  Color Palette::*entry;
  uint32_t light, dark;  // RRGGBB
};
constexpr DefaultRow kDefaults[] = {
    {&Palette::surface, 0xF1F4F8, 0x12141C},         {&Palette::toolbar, 0xE8EDF3, 0x161823},
    {&Palette::editWell, 0xFFFFFF, 0x1E2230},        {&Palette::text, 0x1E293B, 0xCBD5E1},
    {&Palette::textHit, 0x0F7646, 0x5CE0AB},         {&Palette::searchHit, 0xB0EDD0, 0x355A48},
    {&Palette::header, 0x334155, 0x9AA3B8},          {&Palette::rowSel, 0xD8F3E6, 0x263A33},
    {&Palette::accent, 0x2FA36E, 0x42B883},          {&Palette::border, 0xCBD5E1, 0x222430},
    {&Palette::cardBackground, 0xFFFFFF, 0x1E2230},  {&Palette::windowFrame, 0xE8EDF3, 0x12141C},
    {&Palette::alternateRow, 0xE4E9F0, 0x161823},    {&Palette::controlBackground, 0xE2E8F0, 0x1E202A},
    {&Palette::separator, 0x94A3B8, 0x3B4252},       {&Palette::muted, 0x64748B, 0x7A8296},
    {&Palette::mutedFixed, 0x64748B, 0x64748B},      {&Palette::accentStrong, 0x258A5B, 0x38A074},
    {&Palette::accentSoft, 0xD8F3E6, 0x263A33},  // as rowSel
    {&Palette::focusRing, 0x94A3B8, 0x42B883},       {&Palette::headerBackground, 0xDCE3EC, 0x181A25},
    {&Palette::panelBackground, 0xE8EEF5, 0x161925}, {&Palette::tabBackground, 0xDCE3EC, 0x1C1F2B},
    {&Palette::buttonBorder, 0xCBD5E1, 0x232738},
};

template <typename Function>
Color OfChannels(Color color, Function function) {
  const auto channel = [&](int value) { return static_cast<Color>(function(value)) & 0xFF; };
  return channel(RedOf(color)) | channel(GreenOf(color)) << 8 | channel(BlueOf(color)) << 16;
}

int Contrast(Color a, Color b) { return std::abs(Luminance(a) - Luminance(b)); }

std::optional<uint32_t> DigitOf(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  return std::nullopt;
}

}  // namespace

Palette CurrentPalette = ThemeDefaults(false);

Color MixColor(Color a, Color b, int percent) {
  const auto mix = [percent](int x, int y) {
    return static_cast<Color>((x * percent + y * (100 - percent)) / 100);
  };
  return mix(RedOf(a), RedOf(b)) | mix(GreenOf(a), GreenOf(b)) << 8 | mix(BlueOf(a), BlueOf(b)) << 16;
}

int Luminance(Color color) {
  return (RedOf(color) * 299 + GreenOf(color) * 587 + BlueOf(color) * 114) / 1000;
}

Color AdjustHighlightContrast(Color color, Color background, Color neighbour) {
  constexpr int kLeastToColor = 26, kLeastToNeighbour = 18, kBright = 150;
  Color highlight = background;
  if (Contrast(color, highlight) < kLeastToColor || Contrast(neighbour, highlight) < kLeastToNeighbour) {
    const bool isDark = Luminance(color) < kBright;
    highlight =
        OfChannels(color, [isDark](int c) { return isDark ? (c * 52 + 12240) / 100 : c * 68 / 100; });
  }
  if (Contrast(neighbour, highlight) < kLeastToNeighbour) {
    const bool isBright = Luminance(neighbour) >= kBright;
    highlight = OfChannels(
        neighbour, [isBright](int c) { return isBright ? c * 62 / 100 : (c * 48 + 13260) / 100; });
  }
  return highlight;
}

std::optional<Color> ParseHexColor(std::u16string_view text) {
  text = TrimText(text);
  if (text.starts_with(u'#')) text.remove_prefix(1);
  if (text.size() != 6) return std::nullopt;
  uint32_t rrggbb = 0;
  for (const char16_t unit : text) {
    const auto digit = DigitOf(unit);
    if (!digit) return std::nullopt;
    rrggbb = rrggbb << 4 | *digit;
  }
  return ColorOfHex(rrggbb);
}

std::u16string HexColorText(Color color) {
  return FormatText(u"%02X%02X%02X", RedOf(color), GreenOf(color), BlueOf(color));
}

Palette ThemeDefaults(bool dark) {
  Palette palette;
  for (const DefaultRow& row : kDefaults) palette.*row.entry = ColorOfHex(dark ? row.dark : row.light);
  palette.rowSelText = palette.text;
  palette.accentText = LettersOn(palette.accent);
  return palette;
}

Palette WithOverrides(Palette palette, const ColorOverrides& overrides) {
  const auto isSet = [&overrides](Color Palette::*entry) {
    for (size_t role = 0; role < kColorRoles; ++role) {
      if (kUiColorRoles[role].entry == entry) return overrides.overrideSet[role];
    }
    return false;
  };
  for (size_t role = 0; role < kColorRoles; ++role) {
    if (overrides.overrideSet[role]) palette.*kUiColorRoles[role].entry = overrides.overrideColor[role];
  }
  const bool isDark = Luminance(palette.surface) < 128;
  if (isSet(&Palette::accent)) {
    const int strength = isDark ? 82 : 74;
    palette.accentStrong = OfChannels(palette.accent, [strength](int c) { return c * strength / 100; });
    palette.accentSoft = MixColor(palette.accent, palette.surface, isDark ? 28 : 12);
    palette.focusRing = palette.accent;
  }
  if (isSet(&Palette::border)) {
    palette.controlBackground = MixColor(palette.border, palette.surface, isDark ? 70 : 45);
  }
  if (isSet(&Palette::editWell)) palette.cardBackground = palette.editWell;
  palette.rowSelText = palette.text;
  palette.accentText = LettersOn(palette.accent);
  return palette;
}

void ApplyThemeDefaults(bool dark) { CurrentPalette = ThemeDefaults(dark); }

void ApplyColorOverrides() { CurrentPalette = WithOverrides(CurrentPalette, CurrentOverrides); }

}  // namespace quilmark
