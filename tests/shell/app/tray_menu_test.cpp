#include "shell/app/tray_menu.h"

#include <gtest/gtest.h>

#include "config/palette.h"
#include "config/product.h"
#include "shell/app/theme.h"
#include "shell/view/commands.h"
#include "shell/view/made_up_view.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

struct QuietTheme final : ThemePort {
  bool IsOpen() override { return true; }
  std::optional<SystemColors> HighContrast() override { return std::nullopt; }
  void WearTheme(bool isDark) override { worn.push_back(isDark); }
  void WearColors() override {}
  std::vector<bool> worn;
};

class TrayMenu : public testing::Test {
 protected:
  TrayMenu() { app.theme = &theme; }
  ~TrayMenu() override { ApplyThemeDefaults(false); }
  Effects Choose(int choice) {
    return OnTrayChoice(app, harness.Context(), static_cast<uint16_t>(choice));
  }
  void Carry(int choice) { harness.Carry(Choose(choice)); }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
  RecordingSystem& system = harness.system;
  AppState& app = harness.app;
  QuietTheme theme;
};

TEST_F(TrayMenu, OffersItsEntriesInOrder) {
  const std::vector<MenuRow> rows = {{.id = 20001, .text = u"Show Window"},
                                     {.id = 20025, .text = u"Settings Center"},
                                     {.id = 20005, .text = u"Run on Startup", .isChecked = true},
                                     {.id = 20004, .text = u"Homepage"},
                                     {},
                                     {.id = 20002, .text = u"Exit"}};
  EXPECT_EQ(TrayMenuRows(true), rows);
  EXPECT_FALSE(TrayMenuRows(false)[2].isChecked);
}

TEST_F(TrayMenu, NoChoiceDoesNothing) {
  Carry(0);
  EXPECT_TRUE(window.calls.empty());
}

TEST_F(TrayMenu, ShowsTheWindow) {
  Carry(20001);
  EXPECT_EQ(window.calls, (Calls{"AddOrUpdateTrayIcon", "StopTimer 30005", "ShowAndRaise", "TrimSelf"}));
}

TEST_F(TrayMenu, EndsTheProgram) {
  Carry(20002);
  EXPECT_TRUE(app.exitRequested);
  EXPECT_EQ(window.calls, (Calls{"PostClose", "TrimSelf"}));
}

TEST_F(TrayMenu, OpensTheHomePage) {
  Carry(20004);
  EXPECT_EQ(system.calls, Calls{"open https://quilmark.example"});
  EXPECT_TRUE(kMainTitle.ends_with(kHomePage));
  EXPECT_EQ(window.calls, Calls{"TrimSelf"});
}

TEST_F(TrayMenu, TogglesAutostart) {
  Carry(20005);
  EXPECT_EQ(system.calls.size(), 2u) << "asked, and tried";
  EXPECT_EQ(window.Count("TellError"), 1u);
}

TEST_F(TrayMenu, CapturesBothHotkeys) {
  Carry(20007);
  EXPECT_TRUE(app.capture.isActive);
  EXPECT_EQ(app.capture.which, HotkeyKind::kShow);
  Carry(20023);
  EXPECT_EQ(app.capture.which, HotkeyKind::kForeground);
}

TEST_F(TrayMenu, HandsTheListsCommandsToTheSearch) {
  MadeUpView view;
  app.views[0] = &view;
  for (const int choice : {20006, 20008, 20009, 20012, 20022}) Carry(choice);
  EXPECT_EQ(view.commands, (std::vector<uint16_t>{kCommandClearRecent, kCommandSidebar, kCommandTopBar,
                                                  kCommandInitials, kCommandGridLines}));
}

TEST_F(TrayMenu, FlipsTheTrimmingOfOthers) {
  Carry(20021);
  EXPECT_TRUE(CurrentWindowSettings.globalTrimOnToggle);
  EXPECT_EQ(window.Count("Placement"), 1u) << "saved";
  Carry(20021);
  EXPECT_FALSE(CurrentWindowSettings.globalTrimOnToggle);
}

TEST_F(TrayMenu, FlipsTheTheme) {
  Carry(20024);
  Carry(20024);
  EXPECT_EQ(theme.worn, (std::vector<bool>{true, false}));
}

TEST_F(TrayMenu, SetsTheLimitOfContentSearches) {
  const std::vector<int> limits = {10, 20, 50, 100, 500, 0};
  for (int i = 0; i < 6; ++i) {
    Carry(20200 + i);
    EXPECT_EQ(CurrentWindowSettings.contentMaxFileSizeMB, limits[static_cast<size_t>(i)]);
  }
  Carry(20206);
  EXPECT_EQ(CurrentWindowSettings.contentMaxFileSizeMB, 0);
}

TEST_F(TrayMenu, SaysWhatIsNotThere) {
  for (const int choice : {20025, 20020, 20100, 20112}) {
    window.status.clear();
    Carry(choice);
    EXPECT_NE(window.status.find(u"not part of this version."), std::u16string::npos) << choice;
  }
}

}  // namespace
}  // namespace quilmark
