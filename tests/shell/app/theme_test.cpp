#include "shell/app/theme.h"

#include <gtest/gtest.h>

#include "config/ui_colors.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

struct RecordingTheme : ThemePort {
  bool IsOpen() override { return isOpen; }
  std::optional<SystemColors> HighContrast() override { return contrast; }
  void WearTheme(bool isDark) override { worn.push_back(isDark); }
  void WearColors() override { ++recolored; }

  bool isOpen = true;
  std::optional<SystemColors> contrast;
  std::vector<bool> worn;  // each time: dark or not
  int recolored = 0;
};

class Themes : public testing::Test {
 protected:
  ~Themes() override {
    ResetUiColors();
    CurrentPalette = ThemeDefaults(false);
  }

  WindowHarness harness;
  RecordingTheme theme;
};

TEST_F(Themes, AreTakenFromTheSettings) {
  ApplyTheme(theme);
  EXPECT_EQ(CurrentPalette, ThemeDefaults(false));
  CurrentWindowSettings.darkTheme = true;
  ApplyTheme(theme);
  EXPECT_EQ(CurrentPalette, ThemeDefaults(true));
  EXPECT_EQ(theme.worn, (std::vector<bool>{false, true}));
}

TEST_F(Themes, GiveWayToHighContrast) {
  CurrentWindowSettings.darkTheme = true;
  theme.contrast = SystemColors{.window = 0x102030, .windowText = 0xFFFFFF};
  ApplyTheme(theme);
  EXPECT_TRUE(CurrentPalette.isSystem);
  EXPECT_EQ(CurrentPalette.text, 0xFFFFFFu);
  EXPECT_EQ(theme.worn, std::vector<bool>{false}) << "the system draws its own frames";
}

TEST_F(Themes, FollowTheSystemOnlyWhereAColourChanges) {
  ApplyTheme(theme);
  FollowSystemColors(theme);
  EXPECT_EQ(theme.worn.size(), 1u);
  theme.contrast = SystemColors{.window = 0x102030, .windowText = 0xFFFFFF};
  FollowSystemColors(theme);
  FollowSystemColors(theme);
  EXPECT_EQ(theme.worn.size(), 2u);
}

TEST_F(Themes, AreFlippedAndSaved) {
  SwitchTheme(theme, harness.window);
  EXPECT_TRUE(CurrentWindowSettings.darkTheme);
  EXPECT_EQ(theme.worn, std::vector<bool>{true});
  EXPECT_EQ(harness.window.Count("Placement"), 1u) << "asked for when settings are saved";
}

TEST_F(Themes, ChangeTheirBrushesAloneWhileAColourIsDragged) {
  RefreshColorsLive(theme);
  EXPECT_EQ(theme.recolored, 1);
  EXPECT_TRUE(theme.worn.empty());
}

TEST_F(Themes, AreNotChangedByAPresetThatIsNotThere) {
  ApplyTheme(theme);
  const Palette before = CurrentPalette;
  for (const int index : {-1, kUiColorPresets}) ApplyUiColorPreset(theme, harness.window, index);
  EXPECT_EQ(CurrentPalette, before);
  EXPECT_EQ(theme.worn.size(), 1u);
}

TEST_F(Themes, TakeAPresetBeforeThereIsAWindow) {
  theme.isOpen = false;
  ApplyTheme(theme);
  const Palette before = CurrentPalette;
  ApplyUiColorPreset(theme, harness.window, 0);
  EXPECT_NE(CurrentPalette, before);
  EXPECT_EQ(theme.worn.size(), 1u) << "nothing to be repainted";
  EXPECT_EQ(harness.window.Count("Placement"), 0u) << "nothing to be saved";
}

}  // namespace
}  // namespace quilmark
