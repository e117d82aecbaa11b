#include "shell/settings/hotkey_capture.h"

#include <gtest/gtest.h>

#include "shell/recording_system.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

constexpr uint32_t kQ = 81, kO = 79, kZ = 90, kEscape = 27;
constexpr uint32_t kAlt = 1, kCtrl = 2, kShift = 4;
constexpr char16_t kHint[] =
    u"Press a new hotkey combination (include Ctrl / Alt / Shift, Esc to cancel)";

class HotkeyCaptureTest : public testing::Test {
 protected:
  void Begin(HotkeyKind which, CaptureWindow from = CaptureWindow::kMain) {
    BeginHotkeyCapture(parts, which, from);
    system.calls.clear();
    window.calls.clear();
  }
  bool Press(uint32_t key, uint32_t modifiers = 0) {
    return TakeCaptureKey(parts, {.key = key, .modifiers = modifiers, .from = capture.window});
  }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
  RecordingSystem& system = harness.system;
  HotkeyConfig& hotkeys = harness.app.hotkeys;
  HotkeyCapture& capture = harness.app.capture;
  CaptureParts parts{capture, hotkeys, window, system};
};

TEST_F(HotkeyCaptureTest, TheWindowComesUpWithAHint) {
  BeginHotkeyCapture(parts, HotkeyKind::kShow, CaptureWindow::kMain);
  EXPECT_EQ(window.calls, (Calls{"StopTimer 30005", "ShowAndRaise", "AddOrUpdateTrayIcon"}));
  EXPECT_EQ(system.calls, (Calls{"flash", "focus window"}));
  EXPECT_EQ(window.title, kHint);
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30013, 200}}));
  ShowCaptureHint(parts);
  EXPECT_EQ(system.calls.back(), "balloon Information: " + ToUtf8(kHint));
}

TEST_F(HotkeyCaptureTest, TheOtherHotkeyHasAHintOfItsOwn) {
  BeginHotkeyCapture(parts, HotkeyKind::kForeground, CaptureWindow::kMain);
  EXPECT_EQ(window.title,
            u"Press a hotkey for \"open foreground app in Explorer\" (Ctrl / Alt / Shift required, Esc "
            u"to cancel)");
}

TEST_F(HotkeyCaptureTest, ACombinationBecomesTheHotkey) {
  Begin(HotkeyKind::kShow);
  EXPECT_TRUE(Press(kQ, kCtrl | kShift));
  EXPECT_FALSE(capture.isActive);
  EXPECT_EQ(HotkeyOf(hotkeys, HotkeyKind::kShow), (Hotkey{6, kQ}));
  EXPECT_EQ(LoadHotkeys(), hotkeys);
  EXPECT_EQ(window.title, u"Quilmark - 12 results found");
  EXPECT_EQ(system.calls, (Calls{"unregister show", "register show 6+81", "tip",
                                 "box Completed: Hotkey set to: 6+81"}));
  EXPECT_FALSE(Press(kQ, kCtrl)) << "keys are the window's again";
}

TEST_F(HotkeyCaptureTest, TheForegroundHotkeyIsCapturedAlike) {
  Begin(HotkeyKind::kForeground);
  EXPECT_TRUE(Press(kQ, kAlt));
  EXPECT_EQ(HotkeyOf(hotkeys, HotkeyKind::kForeground), (Hotkey{1, kQ}));
  EXPECT_EQ(system.calls, (Calls{"unregister foreground", "register foreground 1+81",
                                 "box Completed: Foreground app location hotkey set to: 1+81"}));
}

TEST_F(HotkeyCaptureTest, EscapeBringsTheFormerTitleBack) {
  system.title = u"Quilmark - 3+ results found...";
  Begin(HotkeyKind::kShow);
  EXPECT_TRUE(Press(kEscape));
  EXPECT_EQ(window.title, u"Quilmark - 3+ results found...");
  EXPECT_FALSE(capture.isActive);
  EXPECT_TRUE(system.calls.empty());
  ShowCaptureHint(parts);
  EXPECT_TRUE(system.calls.empty()) << "no hint after the end";
}

TEST_F(HotkeyCaptureTest, HeldKeysRegisterOnce) {
  Begin(HotkeyKind::kShow);
  for (int i = 0; i < 5; ++i) {
    EXPECT_TRUE(TakeCaptureKey(parts, {.key = kQ, .modifiers = kCtrl, .isRepeat = true}));
  }
  EXPECT_TRUE(system.calls.empty());
  EXPECT_TRUE(capture.isActive);
}

TEST_F(HotkeyCaptureTest, ModifiersAloneAreWaitedThrough) {
  Begin(HotkeyKind::kShow);
  for (const uint32_t key : {16u, 17u, 18u, 91u, 92u}) EXPECT_TRUE(Press(key, kCtrl)) << key;
  EXPECT_TRUE(system.calls.empty());
  EXPECT_TRUE(capture.isActive);
}

// It stands for whatever an input method makes of the key.
TEST_F(HotkeyCaptureTest, AKeyOfAnInputMethodIsNoHotkey) {
  Begin(HotkeyKind::kShow);
  for (const uint32_t key : {229u, 231u}) EXPECT_TRUE(Press(key, kCtrl | kShift)) << key;
  EXPECT_TRUE(system.calls.empty());
  EXPECT_TRUE(capture.isActive);
  EXPECT_EQ(hotkeys, HotkeyConfig());
}

// The Win key never counts.
TEST_F(HotkeyCaptureTest, AKeyWithoutAModifierIsRefused) {
  Begin(HotkeyKind::kShow);
  EXPECT_TRUE(Press(kQ));
  EXPECT_EQ(system.calls, Calls{"box Information: Hotkey must include Ctrl, Alt, or Shift."});
  EXPECT_TRUE(capture.isActive);
  EXPECT_EQ(hotkeys, HotkeyConfig());
}

TEST_F(HotkeyCaptureTest, TheOtherHotkeyIsAConflict) {
  Begin(HotkeyKind::kShow);
  EXPECT_TRUE(Press(kO, kCtrl | kShift));
  EXPECT_EQ(window.errors,
            std::vector<std::u16string>{u"This combination is already used by another hotkey."});
  EXPECT_TRUE(system.calls.empty());
  EXPECT_TRUE(capture.isActive);
}

TEST_F(HotkeyCaptureTest, ARefusedCombinationKeepsTheFormer) {
  system.takesHotkey = [](Hotkey hotkey) { return hotkey.key != kQ; };
  Begin(HotkeyKind::kShow);
  EXPECT_TRUE(Press(kQ, kCtrl));
  EXPECT_EQ(window.errors,
            std::vector<std::u16string>{u"Failed to register hotkey. Try another combination."});
  EXPECT_EQ(system.calls.back(), "register show 1+90");
  EXPECT_TRUE(capture.isActive);
  EXPECT_TRUE(Press(65, kCtrl)) << "another try";
  EXPECT_FALSE(capture.isActive);
}

TEST_F(HotkeyCaptureTest, TheSameCombinationIsAFailure) {
  Begin(HotkeyKind::kShow);
  EXPECT_TRUE(Press(kZ, kAlt));
  EXPECT_EQ(window.errors.size(), 1u);
  EXPECT_TRUE(capture.isActive);
}

TEST_F(HotkeyCaptureTest, ANewCaptureEndsTheFormer) {
  Begin(HotkeyKind::kShow);
  system.title = window.title;
  BeginHotkeyCapture(parts, HotkeyKind::kForeground, CaptureWindow::kSettingsPage);
  EXPECT_EQ(window.title, u"Quilmark - 12 results found");
  EXPECT_EQ(system.calls, (Calls{"page foreground: Waiting...", "focus page foreground"}));
  EXPECT_EQ(capture.which, HotkeyKind::kForeground);
}

TEST_F(HotkeyCaptureTest, ThePageTellsInItsBox) {
  Begin(HotkeyKind::kShow, CaptureWindow::kSettingsPage);
  system.takesHotkey = [](Hotkey hotkey) { return hotkey.key != kQ; };
  for (const auto& [key, modifiers] : {std::pair{kQ, 0u}, {kO, kCtrl | kShift}, {kQ, kCtrl}}) {
    EXPECT_TRUE(Press(key, modifiers));
  }
  EXPECT_TRUE(Press(65, kCtrl));
  EXPECT_EQ(system.calls,
            (Calls{"page show: Need Ctrl/Alt/Shift", "page show: Conflict, retry", "unregister show",
                   "register show 2+81", "register show 1+90", "page show: Failed, retry",
                   "unregister show", "register show 2+65", "tip", "page show: 2+65"}));
  EXPECT_TRUE(window.calls.empty());
  EXPECT_TRUE(window.errors.empty());
}

TEST_F(HotkeyCaptureTest, EscapeInThePageShowsTheFormerHotkey) {
  Begin(HotkeyKind::kShow, CaptureWindow::kSettingsPage);
  EXPECT_TRUE(Press(kEscape));
  EXPECT_EQ(system.calls, Calls{"page show: 1+90"});
}

TEST_F(HotkeyCaptureTest, LeavingTheBoxesOfThePageEndsIt) {
  Begin(HotkeyKind::kShow, CaptureWindow::kSettingsPage);
  EXPECT_FALSE(TakeCaptureKey(
      parts, {.key = kQ, .modifiers = kCtrl, .from = CaptureWindow::kSettingsPage, .isAway = true}));
  EXPECT_FALSE(capture.isActive);
  EXPECT_EQ(hotkeys, HotkeyConfig());
}

TEST_F(HotkeyCaptureTest, WithoutACaptureKeysGoOn) { EXPECT_FALSE(Press(kQ, kCtrl)); }

}  // namespace
}  // namespace quilmark
