#include "config/palette.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

constexpr size_t kSurface = 0, kEditWell = 2, kRowSel = 7, kAccent = 8, kBorder = 9;

ColorOverrides Override(size_t role, uint32_t rrggbb, ColorOverrides overrides = {}) {
  overrides.overrideSet[role] = true;
  overrides.overrideColor[role] = ColorOfHex(rrggbb);
  return overrides;
}

TEST(Palette, KeepsRedInTheLowByte) {
  EXPECT_EQ(ColorOfHex(0x123456), 0x563412u);
  EXPECT_EQ(RedOf(ColorOfHex(0x123456)), 0x12);
  EXPECT_EQ(GreenOf(ColorOfHex(0x123456)), 0x34);
  EXPECT_EQ(BlueOf(ColorOfHex(0x123456)), 0x56);
  EXPECT_EQ(HexColorText(ColorOfHex(0x0A1BC2)), u"0A1BC2");
}

TEST(Palette, ReadsHexColours) {
  EXPECT_EQ(ParseHexColor(u"12AB90"), ColorOfHex(0x12AB90));
  EXPECT_EQ(ParseHexColor(u" \t#12ab9F\r\n"), ColorOfHex(0x12AB9F));
  EXPECT_EQ(ParseHexColor(u"FF0000 "), ColorOfHex(0xFF0000));
}

TEST(Palette, RefusesWhatIsNoHexColour) {
  for (const auto* text : {u"", u" \t", u"#", u"#12ab9", u"##12ab90", u"12ab901", u"12ab9g", u"-12ab9",
                           u"12 b90", u"# 12ab90"}) {
    EXPECT_FALSE(ParseHexColor(text)) << testing::PrintToString(text);
  }
}

TEST(Palette, MixesEachChannelRoundedDown) {
  EXPECT_EQ(MixColor(ColorOfHex(0x0A64FF), ColorOfHex(0x000001), 12), ColorOfHex(0x010C1F));
  EXPECT_EQ(MixColor(ColorOfHex(0x123456), ColorOfHex(0xFFFFFF), 100), ColorOfHex(0x123456));
  EXPECT_EQ(MixColor(ColorOfHex(0x123456), ColorOfHex(0xFEDCBA), 0), ColorOfHex(0xFEDCBA));
}

TEST(Palette, WeighsChannelsAsTheEyeDoes) {
  EXPECT_EQ(Luminance(ColorOfHex(0xFFFFFF)), 255);
  EXPECT_EQ(Luminance(ColorOfHex(0xFF0000)), 76);
  EXPECT_EQ(Luminance(ColorOfHex(0x00FF00)), 149);
  EXPECT_EQ(Luminance(ColorOfHex(0x0000FF)), 29);
}

TEST(Palette, LeavesAHighlightThatIsVisible) {
  EXPECT_EQ(AdjustHighlightContrast(ColorOfHex(0x0F7646), ColorOfHex(0xB0EDD0), ColorOfHex(0x1E293B)),
            ColorOfHex(0xB0EDD0));
}

TEST(Palette, ShadesAHighlightFromTheColourBesideIt) {
  // Dark colour on itself: each channel (c * 52 + 12240) / 100.
  EXPECT_EQ(AdjustHighlightContrast(ColorOfHex(0x101010), ColorOfHex(0x101010), ColorOfHex(0xFFFFFF)),
            ColorOfHex(0x828282));
  // Bright colour: c * 68 / 100.
  EXPECT_EQ(AdjustHighlightContrast(ColorOfHex(0xF0F0F0), ColorOfHex(0xF0F0F0), ColorOfHex(0x000000)),
            ColorOfHex(0xA3A3A3));
}

TEST(Palette, ShadesAHighlightFromTheNeighbourWhereItStillDrowns) {
  // 0x101010 gives 0x828282, as bright as the neighbour, which is dark: (c * 48 + 13260) / 100.
  EXPECT_EQ(AdjustHighlightContrast(ColorOfHex(0x101010), ColorOfHex(0x101010), ColorOfHex(0x828282)),
            ColorOfHex(0xC3C3C3));
  // A bright neighbour: c * 62 / 100.
  EXPECT_EQ(AdjustHighlightContrast(ColorOfHex(0xE0E0E0), ColorOfHex(0xE0E0E0), ColorOfHex(0x9A9A9A)),
            ColorOfHex(0x5F5F5F));
}

TEST(Palette, HasALightAndADarkTheme) {
  const Palette light = ThemeDefaults(false);
  const Palette dark = ThemeDefaults(true);
  EXPECT_EQ(light.surface, ColorOfHex(0xF1F4F8));
  EXPECT_EQ(light.accentSoft, light.rowSel);
  EXPECT_EQ(light.buttonBorder, ColorOfHex(0xCBD5E1));
  EXPECT_EQ(dark.surface, ColorOfHex(0x12141C));
  EXPECT_EQ(dark.accentSoft, dark.rowSel);
  EXPECT_EQ(dark.mutedFixed, light.mutedFixed);
  EXPECT_EQ(dark.buttonBorder, ColorOfHex(0x232738));
}

TEST(Palette, KeepsItsDefaultsWithoutOverrides) {
  EXPECT_EQ(WithOverrides(ThemeDefaults(true), {}), ThemeDefaults(true));
}

TEST(Palette, OverridesARoleAndNothingElse) {
  Palette expected = ThemeDefaults(false);
  expected.rowSel = ColorOfHex(0x010203);
  EXPECT_EQ(WithOverrides(ThemeDefaults(false), Override(kRowSel, 0x010203)), expected);
}

TEST(Palette, DerivesFromAnAccent) {
  const Palette light = WithOverrides(ThemeDefaults(false), Override(kAccent, 0x6496C8));
  EXPECT_EQ(light.accentStrong, ColorOfHex(0x4A6F94));
  EXPECT_EQ(light.accentSoft, MixColor(light.accent, light.surface, 12));
  EXPECT_EQ(light.focusRing, light.accent);
  const Palette dark = WithOverrides(ThemeDefaults(true), Override(kAccent, 0x6496C8));
  EXPECT_EQ(dark.accentStrong, ColorOfHex(0x527BA4));
  EXPECT_EQ(dark.accentSoft, MixColor(dark.accent, dark.surface, 28));
}

TEST(Palette, DerivesFromABorderAndASearchBox) {
  const Palette light = WithOverrides(ThemeDefaults(false), Override(kBorder, 0x404040));
  EXPECT_EQ(light.controlBackground, MixColor(light.border, light.surface, 45));
  const Palette dark = WithOverrides(ThemeDefaults(true), Override(kBorder, 0x404040));
  EXPECT_EQ(dark.controlBackground, MixColor(dark.border, dark.surface, 70));
  EXPECT_EQ(WithOverrides(ThemeDefaults(true), Override(kEditWell, 0x111213)).cardBackground,
            ColorOfHex(0x111213));
}

TEST(Palette, DerivesByTheSurfaceAndNotByTheTheme) {
  const auto overrides = Override(kAccent, 0x6496C8, Override(kSurface, 0xFFFFFF));
  const Palette palette = WithOverrides(ThemeDefaults(true), overrides);
  EXPECT_EQ(palette.accentStrong, ColorOfHex(0x4A6F94));
  EXPECT_EQ(palette.accentSoft, MixColor(palette.accent, palette.surface, 12));
}

}  // namespace
}  // namespace quilmark
