#include "config/system_palette.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

constexpr SystemColors kColors = {.window = 1,
                                  .windowText = 2,
                                  .highlight = 3,
                                  .highlightText = 4,
                                  .buttonFace = 5,
                                  .grayText = 6,
                                  .hotLight = 7};

ColorOverrides Everything() {
  ColorOverrides overrides;
  overrides.overrideSet.fill(true);
  overrides.overrideColor.fill(ColorOfHex(0x123456));
  return overrides;
}

TEST(SystemPalette, WinsOverThemeAndOverrides) {
  for (const bool dark : {false, true}) {
    EXPECT_EQ(PaletteInForce(dark, Everything(), kColors), SystemPalette(kColors));
  }
}

TEST(SystemPalette, IsAbsentWithoutHighContrast) {
  EXPECT_EQ(PaletteInForce(true, {}, std::nullopt), ThemeDefaults(true));
  EXPECT_EQ(PaletteInForce(true, Everything(), std::nullopt),
            WithOverrides(ThemeDefaults(true), Everything()));
}

TEST(SystemPalette, TakesEachColourForWhatItIsMeantFor) {
  const Palette palette = SystemPalette(kColors);
  EXPECT_EQ(palette.surface, kColors.window);
  EXPECT_EQ(palette.editWell, kColors.window);
  EXPECT_EQ(palette.text, kColors.windowText);
  EXPECT_EQ(palette.rowSel, kColors.highlight);
  EXPECT_EQ(palette.rowSelText, kColors.highlightText);
  EXPECT_EQ(palette.accent, kColors.highlight);
  EXPECT_EQ(palette.accentText, kColors.highlightText);
  EXPECT_EQ(palette.toolbar, kColors.buttonFace);
  EXPECT_EQ(palette.muted, kColors.grayText);
  EXPECT_EQ(palette.focusRing, kColors.hotLight);
}

TEST(SystemPalette, LeavesNoEntryWithoutAColour) {
  const Palette palette = SystemPalette(kColors);
  for (const Color color : {palette.surface,          palette.toolbar,
                            palette.editWell,         palette.text,
                            palette.textHit,          palette.searchHit,
                            palette.header,           palette.rowSel,
                            palette.accent,           palette.border,
                            palette.cardBackground,   palette.windowFrame,
                            palette.alternateRow,     palette.controlBackground,
                            palette.separator,        palette.muted,
                            palette.mutedFixed,       palette.accentStrong,
                            palette.accentSoft,       palette.focusRing,
                            palette.headerBackground, palette.panelBackground,
                            palette.tabBackground,    palette.buttonBorder,
                            palette.rowSelText,       palette.accentText}) {
    EXPECT_GE(color, kColors.window);
    EXPECT_LE(color, kColors.hotLight);
  }
}

}  // namespace
}  // namespace quilmark
