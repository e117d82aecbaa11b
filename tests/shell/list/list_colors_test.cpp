#include "shell/list/list_colors.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "config/contrast.h"
#include "config/system_palette.h"
#include "shell/list/list_view.h"
#include "shell/preset_palette.h"

namespace quilmark {
namespace {

// Both themes, then the presets.
class ListColorsIn : public testing::TestWithParam<int> {
 protected:
  Palette palette = GetParam() < 2 ? ThemeDefaults(GetParam() == 1) : PresetPalette(GetParam() - 2);
  ListColors colors = ListColorsOf(palette);
};

TEST_P(ListColorsIn, CanBeReadOnEveryGround) {
  for (const RowColors& row : {colors.plain, colors.hovered, colors.selected}) {
    EXPECT_GE(ContrastRatio(row.ground, row.text), kReadableContrast);
    EXPECT_GE(ContrastRatio(row.ground, row.muted), kReadableContrast);
  }
  EXPECT_GE(ContrastRatio(palette.toolbar, colors.status), kReadableContrast);
  EXPECT_GE(ContrastRatio(palette.accent, palette.accentText), kReadableContrast);
  EXPECT_GE(ContrastRatio(palette.editWell, palette.text), kReadableContrast);
  // Chosen by the user or the preset, and drawn as chosen.
  EXPECT_GE(ContrastRatio(colors.band, colors.bandText), 3.3);
}

TEST_P(ListColorsIn, TellsRowsApart) {
  EXPECT_GE(ContrastRatio(colors.plain.ground, colors.hovered.ground), 1.1);
  EXPECT_NE(colors.selected.ground, colors.hovered.ground);
  for (const RowColors& row : {colors.plain, colors.hovered, colors.selected}) {
    EXPECT_NE(row.ground, row.hit);
    EXPECT_GE(ContrastRatio(row.hit, row.hitText), 3);
  }
  for (const RowColors& row : {colors.plain, colors.selected}) {
    EXPECT_GE(std::abs(Luminance(row.ground) - Luminance(row.hit)), 18);
  }
  EXPECT_GE(ContrastRatio(palette.surface, BarColorsOn(palette, palette.surface).thumb), 2);
  EXPECT_EQ(colors.hovered.hit, colors.plain.hit);  // nothing flickers under the mouse
}

INSTANTIATE_TEST_SUITE_P(Palettes, ListColorsIn, testing::Range(0, 2 + kUiColorPresets));

TEST(ListColors, AreThoseOfTheSystemAtHighContrast) {
  const SystemColors system = {.window = ColorOfHex(0x000000),
                               .windowText = ColorOfHex(0xFFFFFF),
                               .highlight = ColorOfHex(0x1AEBFF),
                               .highlightText = ColorOfHex(0x010101),
                               .buttonFace = ColorOfHex(0x020202),
                               .grayText = ColorOfHex(0x3FF23F),
                               .hotLight = ColorOfHex(0xFFFF00)};
  const Palette palette = SystemPalette(system);
  const ListColors colors = ListColorsOf(palette);
  EXPECT_EQ(colors.plain.ground, system.window);
  EXPECT_EQ(colors.plain.text, system.windowText);
  EXPECT_EQ(colors.hovered.text, system.hotLight);
  EXPECT_EQ(colors.selected.ground, system.highlight);
  EXPECT_EQ(colors.selected.text, system.highlightText);
  EXPECT_EQ(colors.plain.hit, system.highlight);
  EXPECT_EQ(colors.plain.hitText, system.highlightText);
  EXPECT_EQ(BarColorsOn(palette, palette.surface).thumb, system.windowText);
  EXPECT_EQ(colors.band, system.buttonFace);
}

// The header wears two colours of the preset as they are, whatever their contrast.
TEST(HeaderColors, HaveTheContrastOfTheirPreset) {
  constexpr double kContrasts[kUiColorPresets] = {4.8, 6.7, 4.2, 6.0, 3.9, 5.9, 4.5, 6.1, 3.6, 5.8};
  for (int index = 0; index < kUiColorPresets; ++index) {
    const ListColors colors = ListColorsOf(PresetPalette(index));
    EXPECT_NEAR(ContrastRatio(colors.band, colors.bandText), kContrasts[index], 0.051) << index;
  }
  for (const bool isDark : {false, true}) {
    const ListColors colors = ListColorsOf(ThemeDefaults(isDark));
    EXPECT_GE(ContrastRatio(colors.band, colors.bandText), kReadableContrast);
  }
}

}  // namespace
}  // namespace quilmark
