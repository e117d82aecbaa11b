#include "shell/app/hotkey_events.h"

#include <gtest/gtest.h>

#include "config/config_directory.h"
#include "platform/files.h"
#include "shell/app/routing.h"
#include "shell/app/window_events.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

class HotkeyEvents : public testing::Test {
 protected:
  WindowHarness harness;
  RecordingWindow& window = harness.window;
  RecordingSystem& system = harness.system;
  AppState& app = harness.app;
};

TEST_F(HotkeyEvents, BothAreAskedForAtTheStart) {
  RegisterHotkeysAtStart(app);
  EXPECT_EQ(system.calls, (Calls{"unregister show", "register show 1+90", "tip", "unregister foreground",
                                 "register foreground 6+79"}));
  EXPECT_TRUE(IsMissingPath(ConfigPath(u"hotkey.ini"))) << "nothing new to save";
}

TEST_F(HotkeyEvents, OfTwoEqualOnesTheForegroundsIsTaken) {
  app.hotkeys.showModifiers = 6;
  app.hotkeys.showKey = 79;
  RegisterHotkeysAtStart(app);
  EXPECT_EQ(system.calls, (Calls{"unregister foreground", "register foreground 6+79"}));
}

TEST_F(HotkeyEvents, OneThatIsTakenAtTheStartIsNotTold) {
  system.takesHotkey = [](Hotkey) { return false; };
  RegisterHotkeysAtStart(app);
  EXPECT_TRUE(window.errors.empty());
  EXPECT_EQ(app.hotkeys, HotkeyConfig());
}

TEST_F(HotkeyEvents, ACaptureShowsTheWindowToTheUser) {
  app.firstSearchDeferred = true;
  CaptureHotkey(app, window, HotkeyKind::kShow);
  EXPECT_TRUE(app.shownByUser);
  EXPECT_TRUE(app.firstSearchDeferred) << "the search is left to the next show";
  EXPECT_TRUE(app.capture.isActive);
}

TEST_F(HotkeyEvents, AHintComesByTheTimerWhileTheCaptureGoesOn) {
  CaptureHotkey(app, window, HotkeyKind::kShow);
  system.calls.clear();
  EXPECT_TRUE(harness.Carry(RouteTimer(app, harness.Context(), 30013)));
  ASSERT_EQ(system.calls.size(), 1u);
  EXPECT_TRUE(system.calls[0].starts_with("balloon"));
  EXPECT_TRUE(OnCaptureKey(app, window, {.key = 27}));
  EXPECT_TRUE(harness.Carry(RouteTimer(app, harness.Context(), 30013)));
  EXPECT_EQ(system.calls.size(), 1u);
}

TEST_F(HotkeyEvents, AnActiveWindowKeepsTheKeysOfACapture) {
  CaptureHotkey(app, window, HotkeyKind::kShow);
  window.calls.clear();
  EXPECT_FALSE(harness.Carry(OnActivation(app, harness.Context(), Activation::kActivated)));
  EXPECT_EQ(window.Count("FocusSearchBox"), 0u);
  EXPECT_EQ(window.timers.at(30010), 30'000u);
}

TEST_F(HotkeyEvents, KeysGoOnWithoutACapture) {
  EXPECT_FALSE(OnCaptureKey(app, window, {.key = 81, .modifiers = 2}));
}

}  // namespace
}  // namespace quilmark
