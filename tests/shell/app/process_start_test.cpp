#include "shell/app/process_start.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "config/config_directory.h"
#include "config/palette.h"
#include "config/ui_colors.h"
#include "platform/text_file.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

// A system that writes down what is asked and answers as the test says.
struct ScriptedProcess : ProcessPort {
  bool HasScaleAwareness() override { return hasScaleAwareness; }
  bool SetScaleAwareness(int context) override {
    Note("scale " + std::to_string(context));
    return context == takenContext;
  }
  uint32_t SystemDpi() override { return Note("dpi"), dpi; }
  void Pause(uint32_t ms) override {
    Note("pause " + std::to_string(ms));
    paused += ms;
  }
  uint16_t UiLanguage() override { return Note("language"), language; }
  std::optional<std::vector<std::u16string>> Arguments() override { return arguments; }
  std::u16string CommandLineText() override { return commandLine; }
  bool TakeMutex(std::u16string_view name) override {
    EXPECT_EQ(name, u"Quilmark_Singleton_Mutex_2024");
    return Note("mutex"), isOnlyCopy;
  }
  void CloseMutex() override { Note("close mutex"); }
  void EnablePrivilege(std::u16string_view name) override {
    Note("privilege " + std::string(name.begin(), name.end()));
  }
  bool ShellIsUp() override { return Note("shell"), paused - 1'000 >= shellIsUpAfterMs; }
  bool IsAdministrator() override { return Note("admin"), isAdministrator; }
  void ShowBox(BoxIcon icon, const std::u16string& title, const std::u16string& text) override {
    Note(icon == BoxIcon::kError ? "error box" : "information box");
    boxTitle = title;
    boxText = text;
  }
  bool FindRunningWindow() override { return paused - 1'000 >= windowAfterMs; }
  void LetRunningTakeForeground() override { Note("hand on the foreground"); }
  void RaiseRunningWindow() override { Note("raise"); }
  void AskRunningToShow() override { Note("ask to show"); }
  std::u16string HotkeyText(uint32_t modifiers, uint32_t key) override {
    return modifiers == 1 && key == 90 ? u"Alt+Z" : u"?";
  }
  void RegisterWindowClass() override {
    Note("class");
    surfaceAtClass = CurrentPalette.surface;
  }
  std::optional<Rect> WorkArea() override { return workArea; }
  Rect PrimaryScreen() override { return {0, 0, 1'600, 1'000}; }
  bool CreateMainWindow(Point at, int w, int h, const std::u16string& text) override {
    Note("window");
    place = at;
    width = w;
    height = h;
    windowTitle = text;
    return true;
  }
  void ShowCreatedWindow(bool hidden) override { Note(hidden ? "hide" : "show"); }
  void RunMessageLoop() override { Note("loop"); }

  void Note(const std::string& call) { calls.push_back(call); }

  bool hasScaleAwareness = true, isOnlyCopy = true, isAdministrator = true;
  int takenContext = -4;
  uint32_t dpi = 96, paused = 0;
  uint32_t shellIsUpAfterMs = 0, windowAfterMs = 0;
  uint16_t language = 0x0409;
  std::optional<std::vector<std::u16string>> arguments = {{u"Quilmark.exe"}};
  std::u16string commandLine;
  std::optional<Rect> workArea = Rect{0, 0, 1'920, 1'040};

  Calls calls;
  std::u16string windowTitle, boxTitle, boxText;
  Point place;
  int width = 0, height = 0;
  Color surfaceAtClass = 0;
};

class ProcessStart : public testing::Test {
 protected:
  int Run() { return RunProcess(harness.app, system); }
  void WriteFile(std::u16string_view name, std::u16string_view text) {
    ASSERT_TRUE(WriteTextFile(GetConfigDirectory() + u"\\" + std::u16string(name), text));
  }
  ~ProcessStart() override {
    CurrentOverrides = {};
    ApplyThemeDefaults(false);
  }

  WindowHarness harness;
  ScriptedProcess system;
};

TEST_F(ProcessStart, TakesItsStepsInOrder) {
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(system.calls,
            (Calls{"scale -4", "dpi", "pause 1000", "language", "mutex", "privilege SeBackupPrivilege",
                   "privilege SeRestorePrivilege", "privilege SeManageVolumePrivilege", "admin", "class",
                   "window", "show", "loop", "pause 500", "close mutex"}));
  EXPECT_EQ(system.windowTitle, u"Initializing...");
}

TEST_F(ProcessStart, LoadsTheFilesThatWereOpenedLast) {
  WriteFile(u"recent.ini", u"1\tQ:\\a.txt\n");
  Run();
  EXPECT_EQ(harness.search.Next().message, WM_RECENT_LOADED);
  EXPECT_EQ(TheRecentOpens().Entries().size(), 1u);
}

TEST_F(ProcessStart, TakesTheBestScaleThatTheSystemHas) {
  system.takenContext = -2;
  Run();
  EXPECT_EQ(Calls(system.calls.begin(), system.calls.begin() + 4),
            (Calls{"scale -4", "scale -3", "scale -2", "dpi"}));
}

TEST_F(ProcessStart, GoesOnWhereEveryScaleIsRefused) {
  system.takenContext = 0;
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(system.calls[3], "scale -5");
  EXPECT_EQ(system.calls[4], "dpi");
}

TEST_F(ProcessStart, AsksForNoScaleWhereTheSystemHasNone) {
  system.hasScaleAwareness = false;
  Run();
  EXPECT_EQ(system.calls[0], "dpi");
}

TEST_F(ProcessStart, OpensInTheMiddleOfTheWorkArea) {
  system.workArea = Rect{0, 40, 1'920, 1'080};
  Run();
  EXPECT_EQ(system.place, (Point{410, 210}));
  EXPECT_EQ(system.width, 1'100);
  EXPECT_EQ(system.height, 700);
}

TEST_F(ProcessStart, TakesTheWholeScreenWhereTheWorkAreaIsUnknown) {
  system.workArea = std::nullopt;
  Run();
  EXPECT_EQ(system.place, (Point{250, 150}));
}

TEST_F(ProcessStart, OpensAsLargeAsItWasLeft) {
  WriteFile(u"window.ini", u"width=1000\nheight=600\nthemeMode=dark\ninitialSearchEnabled=0\n");
  system.dpi = 144;
  Run();
  EXPECT_EQ(system.width, 1'500);
  EXPECT_EQ(system.height, 900);
  EXPECT_EQ(system.surfaceAtClass, ThemeDefaults(true).surface);
  EXPECT_FALSE(TheSearch().options.initials);
}

TEST_F(ProcessStart, HasTheUsersColoursBeforeTheWindowsClass) {
  WriteFile(u"ui_colors.ini", u"surface=102030\n");
  Run();
  EXPECT_EQ(system.surfaceAtClass, ColorOfHex(0x102030));
}

TEST_F(ProcessStart, RefusesToRunWithoutRights) {
  system.isAdministrator = false;
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(system.calls.back(), "error box");
  EXPECT_EQ(system.boxTitle, u"Quilmark");
  EXPECT_EQ(system.boxText, u"Run as administrator required.");
}

TEST_F(ProcessStart, AHiddenStartWithoutRightsReachesTheWindow) {
  system.isAdministrator = false;
  system.arguments = {{u"Quilmark.exe", u"-hidden"}};
  EXPECT_EQ(Run(), 0);
  EXPECT_TRUE(harness.app.hiddenStart);
  EXPECT_EQ(system.calls,
            (Calls{"scale -4", "dpi", "pause 1000", "language", "mutex", "privilege SeBackupPrivilege",
                   "privilege SeRestorePrivilege", "privilege SeManageVolumePrivilege", "shell", "class",
                   "window", "hide", "loop", "pause 500", "close mutex"}));
}

TEST_F(ProcessStart, AHiddenStartWaitsForTheShellOfTheSystem) {
  system.arguments = {{u"Quilmark.exe", u"/HIDDEN"}};
  system.shellIsUpAfterMs = 1'000;
  Run();
  EXPECT_EQ(std::count(system.calls.begin(), system.calls.end(), "shell"), 3);
}

TEST_F(ProcessStart, AHiddenStartGoesOnWithoutAShell) {
  system.arguments = {{u"Quilmark.exe", u"/hidden"}};
  system.shellIsUpAfterMs = 1'000'000;
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(system.paused, 1'000u + 6 * 500u + 500u);
}

TEST_F(ProcessStart, ASecondCopyShowsTheFirst) {
  system.isOnlyCopy = false;
  system.windowAfterMs = 300;
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(Calls(system.calls.end() - 3, system.calls.end()),
            (Calls{"hand on the foreground", "raise", "ask to show"}));
  EXPECT_EQ(system.paused, 1'300u);
}

TEST_F(ProcessStart, ASecondCopyNamesTheHotkeyWhereThereIsNoWindowYet) {
  system.isOnlyCopy = false;
  system.windowAfterMs = 1'000'000;
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(system.paused, 6'000u);
  EXPECT_EQ(system.calls.back(), "information box");
  EXPECT_EQ(system.boxTitle, u"Information");
  EXPECT_EQ(
      system.boxText,
      u"Quilmark is already running.\n\nUse the hotkey \"Alt+Z\" to show or hide the main window.");
}

TEST_F(ProcessStart, AHiddenSecondCopyEndsInSilence) {
  system.isOnlyCopy = false;
  system.arguments = {{u"Quilmark.exe", u"-Hidden"}};
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(system.calls, (Calls{"scale -4", "dpi", "pause 1000", "language", "mutex"}));
}

TEST_F(ProcessStart, ChoosesTheLanguage) {
  Run();
  EXPECT_EQ(harness.app.language, u"en-us");
  EXPECT_FALSE(harness.app.uiIsChinese);
  system.language = 0x0804;
  Run();
  EXPECT_EQ(harness.app.language, u"zh-cn");
  EXPECT_TRUE(harness.app.uiIsChinese);
  WriteFile(u"language.ini", u"lang=de-de\n");
  Run();
  EXPECT_EQ(harness.app.language, u"de-de");
}

TEST_F(ProcessStart, ReadsTheHotkeys) {
  WriteFile(u"hotkey.ini", u"modifiers=2\nkey=70\n");
  Run();
  EXPECT_EQ(harness.app.hotkeys.showModifiers, 2u);
  EXPECT_EQ(harness.app.hotkeys.showKey, 70u);
}

TEST_F(ProcessStart, SearchesTheTextOfACommandLineThatCannotBeSplit) {
  system.arguments = std::nullopt;
  system.commandLine = u"--Hidden";
  Run();
  EXPECT_TRUE(harness.app.hiddenStart);
}

}  // namespace
}  // namespace quilmark
