#include "config/ui_colors.h"

#include <gtest/gtest.h>

#include "config/config_directory.h"
#include "config/scratch_config.h"
#include "platform/text_file.h"

namespace quilmark {
namespace {

constexpr size_t kSurface = 0, kAccent = 8;

std::u16string FileText() { return *ReadTextFile(GetConfigDirectory() + u"\\ui_colors.ini"); }

class UiColorsFile : public testing::Test {
 protected:
  ~UiColorsFile() override {
    CurrentOverrides = {};
    activePreset = -1;
  }
  ScratchConfig config;
};

TEST(UiColors, ReadsRolesInAnyCase) {
  const ColorOverrides overrides = ReadUiColors(u"ACCENT=12AB90\n  surface = #ff0000 \n");
  EXPECT_TRUE(overrides.overrideSet[kAccent]);
  EXPECT_EQ(overrides.overrideColor[kAccent], ColorOfHex(0x12AB90));
  EXPECT_EQ(overrides.overrideColor[kSurface], ColorOfHex(0xFF0000));
}

TEST(UiColors, AcceptsABlankBehindAColour) {
  EXPECT_TRUE(ReadUiColors(u"surface=FF0000 \n").overrideSet[kSurface]);
}

TEST(UiColors, IgnoresWhatItCannotRead) {
  EXPECT_EQ(ReadUiColors(u"accent=#12ab9\nsurfaces=000000\n#text=000000\n\nborder\n=000000\n"),
            ColorOverrides{});
}

TEST(UiColors, TakesTheLastOfTwoLines) {
  EXPECT_EQ(ReadUiColors(u"accent=000001\naccent=000002\naccent=zz\n").overrideColor[kAccent],
            ColorOfHex(0x000002));
}

TEST(UiColors, WritesRolesInTheirOrder) {
  ColorOverrides overrides;
  overrides.overrideSet[kAccent] = overrides.overrideSet[kSurface] = true;
  overrides.overrideColor[kAccent] = ColorOfHex(0x12AB90);
  overrides.overrideColor[kSurface] = ColorOfHex(0x00000F);
  const std::u16string text = UiColorsText(overrides);
  EXPECT_TRUE(text.starts_with(
      u"# Custom UI colors (hex RRGGBB). Use Reset in Settings to restore theme defaults.\n# "));
  EXPECT_TRUE(text.ends_with(u"\nsurface=00000F\naccent=12AB90\n"));
  EXPECT_EQ(ReadUiColors(text), overrides);
}

TEST_F(UiColorsFile, GivesNoOverridesWithoutAFile) {
  CurrentOverrides.overrideSet[kAccent] = true;
  LoadUiColors();
  EXPECT_EQ(CurrentOverrides, ColorOverrides{});
}

TEST_F(UiColorsFile, KeepsOverridesBetweenRuns) {
  CurrentOverrides.overrideSet[kAccent] = true;
  CurrentOverrides.overrideColor[kAccent] = ColorOfHex(0x12AB90);
  const ColorOverrides saved = CurrentOverrides;
  SaveUiColors();
  CurrentOverrides = {};
  LoadUiColors();
  EXPECT_EQ(CurrentOverrides, saved);
}

TEST_F(UiColorsFile, LeavesOnlyCommentsAfterAReset) {
  ASSERT_TRUE(TakeUiColorPreset(3));
  ResetUiColors();
  EXPECT_EQ(activePreset, -1);
  EXPECT_EQ(FileText(), UiColorsText({}));
  LoadUiColors();
  EXPECT_EQ(CurrentOverrides, ColorOverrides{});
}

TEST_F(UiColorsFile, TakesEveryRoleFromAPreset) {
  for (int index = 0; index < kUiColorPresets; ++index) {
    SCOPED_TRACE(index);
    ASSERT_TRUE(TakeUiColorPreset(index));
    EXPECT_EQ(activePreset, index);
    const UiColorPreset& preset = kUiColorPresetRows[static_cast<size_t>(index)];
    const Palette palette = WithOverrides(ThemeDefaults(preset.mode == 1), CurrentOverrides);
    for (size_t role = 0; role < kColorRoles; ++role) {
      EXPECT_EQ(palette.*kUiColorRoles[role].entry, ColorOfHex(preset.rrggbb[role]));
    }
    EXPECT_EQ(ReadUiColors(FileText()), CurrentOverrides);
    EXPECT_EQ(Luminance(palette.surface) < 128, preset.mode == 1);
  }
}

TEST_F(UiColorsFile, KnowsNoOtherPresets) {
  EXPECT_FALSE(TakeUiColorPreset(-1));
  EXPECT_FALSE(TakeUiColorPreset(kUiColorPresets));
  EXPECT_EQ(CurrentOverrides, ColorOverrides{});
}

}  // namespace
}  // namespace quilmark
