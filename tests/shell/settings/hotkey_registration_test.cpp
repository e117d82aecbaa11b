#include "shell/settings/hotkey_registration.h"

#include <gtest/gtest.h>

#include "config/scratch_config.h"
#include "shell/recording_system.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

struct HotkeyRegistration : testing::Test {
  ScratchConfig config;
  RecordingSystem system;
  HotkeyConfig hotkeys;
};

TEST_F(HotkeyRegistration, TakesAFreeCombinationInThePlaceOfTheFormer) {
  EXPECT_TRUE(RegisterShowHotkey(hotkeys, system, {2, 81}, SaveHotkey::kYes));
  EXPECT_EQ(system.calls, (Calls{"unregister show", "register show 2+81", "tip"}));
  EXPECT_EQ(HotkeyOf(hotkeys, HotkeyKind::kShow), (Hotkey{2, 81}));
  EXPECT_EQ(LoadHotkeys(), hotkeys);
}

TEST_F(HotkeyRegistration, KeepsTheFormerWhereTheSystemRefuses) {
  system.takesHotkey = [](Hotkey hotkey) { return hotkey.key != 81; };
  EXPECT_FALSE(RegisterShowHotkey(hotkeys, system, {2, 81}, SaveHotkey::kYes));
  EXPECT_EQ(system.calls, (Calls{"unregister show", "register show 2+81", "register show 1+90"}));
  EXPECT_EQ(hotkeys, HotkeyConfig());
  EXPECT_EQ(LoadHotkeys(), HotkeyConfig());
}

TEST_F(HotkeyRegistration, RefusesTheOtherHotkey) {
  EXPECT_FALSE(RegisterShowHotkey(hotkeys, system, {6, 79}, SaveHotkey::kYes));
  EXPECT_FALSE(RegisterHotkeyOf(hotkeys, system, HotkeyKind::kForeground, {1, 90}, SaveHotkey::kYes));
  EXPECT_TRUE(system.calls.empty());
}

TEST_F(HotkeyRegistration, SavesOnlyWhereItIsToldTo) {
  EXPECT_TRUE(RegisterShowHotkey(hotkeys, system, {2, 81}, SaveHotkey::kNo));
  EXPECT_EQ(LoadHotkeys(), HotkeyConfig());
}

TEST_F(HotkeyRegistration, TheForegroundHotkeyChangesNoTip) {
  EXPECT_TRUE(RegisterHotkeyOf(hotkeys, system, HotkeyKind::kForeground, {2, 81}, SaveHotkey::kNo));
  RegisterForegroundHotkey(hotkeys, system);
  EXPECT_EQ(system.calls, (Calls{"unregister foreground", "register foreground 2+81",
                                 "unregister foreground", "register foreground 2+81"}));
}

}  // namespace
}  // namespace quilmark
