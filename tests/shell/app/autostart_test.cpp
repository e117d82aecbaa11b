#include "shell/app/autostart.h"

#include <gtest/gtest.h>

#include "shell/window_harness.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

constexpr char kQuery[] = "10000 /Query /TN Quilmark_AutoStart";
constexpr char kCreate[] =
    "15000 /Create /F /TN Quilmark_AutoStart /SC ONLOGON /DELAY 0000:15 /RL HIGHEST /TR \"C:\\Program "
    "Files\\Quilmark\\Quilmark.exe\" -hidden";
constexpr char kDelete[] = "10000 /Delete /TN Quilmark_AutoStart /F";

// A scheduler that has the task, or has it not.
class Autostart : public testing::Test {
 protected:
  Autostart() {
    system.runs = [this](std::u16string_view order) -> ToolRun {
      if (order == u"/Query") return {.hasRun = true, .exitCode = hasTask ? 0u : 1u};
      if (exitCode == 0) hasTask = order == u"/Create";
      return {.hasRun = hasRun, .exitCode = exitCode};
    };
  }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
  RecordingSystem& system = harness.system;
  bool hasTask = false, hasRun = true;
  uint32_t exitCode = 0;
};

TEST_F(Autostart, IsOnInTheNewWayAndInTheOld) {
  EXPECT_FALSE(IsAutostartEnabled(system));
  system.hasRunValue = true;
  EXPECT_TRUE(IsAutostartEnabled(system));
  system.hasRunValue = false;
  hasTask = true;
  EXPECT_TRUE(IsAutostartEnabled(system));
}

TEST_F(Autostart, IsOffWhereTheToolDoesNotRun) {
  system.runs = [](std::u16string_view) { return ToolRun{.hasRun = false, .exitCode = 0}; };
  EXPECT_FALSE(IsAutostartEnabled(system));
}

TEST_F(Autostart, AClickMakesTheTask) {
  ToggleAutostart(system, window);
  EXPECT_EQ(system.calls, (Calls{kQuery, kCreate, "delete value", kQuery}));
  EXPECT_TRUE(hasTask);
  EXPECT_TRUE(window.errors.empty());
}

TEST_F(Autostart, ATaskThatIsNotMadeIsTold) {
  exitCode = 5;
  ToggleAutostart(system, window);
  EXPECT_EQ(system.calls, (Calls{kQuery, kCreate}));
  EXPECT_EQ(window.errors, std::vector<std::u16string>{
                               u"Failed to create startup task.\nTask exit code: 5\nTip: run app "
                               u"as administrator and enable again."});
}

TEST_F(Autostart, AToolThatTakesTooLongIsTold) {
  hasRun = false;
  exitCode = 258;
  ToggleAutostart(system, window);
  ASSERT_EQ(window.errors.size(), 1u);
  EXPECT_NE(window.errors[0].find(u"Task exit code: 258\n"), std::u16string::npos);
}

TEST_F(Autostart, ATaskThatIsNotThereAfterwardsIsTold) {
  system.runs = [](std::u16string_view order) {
    return ToolRun{.hasRun = true, .exitCode = order == u"/Query" ? 1u : 0u};
  };
  ToggleAutostart(system, window);
  ASSERT_EQ(window.errors.size(), 1u);
  EXPECT_NE(window.errors[0].find(u"Task exit code: 0\n"), std::u16string::npos);
}

TEST_F(Autostart, AClickDeletesTheTask) {
  hasTask = true;
  ToggleAutostart(system, window);
  EXPECT_EQ(system.calls, (Calls{kQuery, kDelete, "delete value", kQuery}));
  EXPECT_FALSE(hasTask);
  EXPECT_TRUE(window.errors.empty());
}

// The old way counts as on, so that a click turns it off and makes no task.
TEST_F(Autostart, AClickDeletesTheRunValueAlone) {
  system.hasRunValue = true;
  ToggleAutostart(system, window);
  EXPECT_EQ(system.calls, (Calls{kQuery, "delete value"}));
  EXPECT_FALSE(system.hasRunValue);
  EXPECT_TRUE(window.errors.empty());
}

TEST_F(Autostart, WhatSurvivesIsTold) {
  hasTask = true;
  system.hasRunValue = true;
  exitCode = 1;
  system.registryError = 5;
  ToggleAutostart(system, window);
  EXPECT_EQ(window.errors, std::vector<std::u16string>{
                               u"Failed to disable startup.\nTask exit code: 1\nRegistry error: 5"});
  hasTask = false;
  ToggleAutostart(system, window);
  ASSERT_EQ(window.errors.size(), 2u);
  EXPECT_EQ(window.errors[1], u"Failed to disable startup.\nTask exit code: 0\nRegistry error: 5");
}

TEST(CommandLine, QuotesEachArgumentAsItsSplittingTakesItBack) {
  EXPECT_EQ(CommandLineOf(u"C:\\Windows\\schtasks.exe",
                          {u"/TN", u"a b", u"\"C:\\Program Files\\Q.exe\" -hidden", u"C:\\a b\\",
                           u"x\\\"y", u"C:\\plain\\"}),
            u"\"C:\\Windows\\schtasks.exe\" /TN \"a b\" \"\\\"C:\\Program Files\\Q.exe\\\" -hidden\" "
            u"\"C:\\a b\\\\\" \"x\\\\\\\"y\" C:\\plain\\");
}

}  // namespace
}  // namespace quilmark
