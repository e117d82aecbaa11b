#include "shell/app/app_commands.h"

#include <gtest/gtest.h>

#include "shell/search/selection.h"
#include "shell/test_pump.h"
#include "shell/view/commands.h"
#include "shell/view/made_up_view.h"

namespace quilmark {
namespace {

class AppCommands : public testing::Test {
 protected:
  AppCommands() {
    pump.Create();
    harness.HoldResults(5);
    FollowNewResults(KeepFiltered::kNo, 5);
    SelectOnly(app.search.list.selection, 2);
  }
  bool Run(uint16_t id) {
    const Effects effects = RunAppCommand(app, pump.Context(), id);
    pump.CarryOut(effects);
    return effects.isTaken;
  }
  void Add(AppMode mode) { app.views[static_cast<size_t>(mode)] = &other; }

  WindowHarness harness;
  AppState& app = harness.app;
  TestPump pump{harness};
  MadeUpView other;
};

TEST_F(AppCommands, SayWhatThisVersionHasNot) {
  for (const auto& [id, text] :
       {std::pair{kCommandAnalysis, u"Disk analysis is not part of this version."},
        std::pair{kCommandDuplicates, u"The duplicate finder is not part of this version."},
        std::pair{kCommandSettings, u"The Settings Center is not part of this version."}}) {
    EXPECT_TRUE(Run(id));
    EXPECT_EQ(pump.status, text);
    EXPECT_EQ(app.appMode, AppMode::kSearch);
  }
}

TEST_F(AppCommands, AnalysisIsEnteredAndLeftByTheSameOne) {
  Add(AppMode::kAnalysis);
  EXPECT_TRUE(Run(kCommandAnalysis));
  EXPECT_EQ(app.appMode, AppMode::kAnalysis);
  EXPECT_EQ(pump.status, u"Switched to Analysis (use Back to Search to return).");
  app.search.isBoxEnabled = true;
  EXPECT_TRUE(Run(kCommandAnalysis));
  EXPECT_EQ(app.appMode, AppMode::kSearch);
  EXPECT_EQ(pump.focus, KeysGoTo::kSearchBox);
  EXPECT_EQ(pump.status, u"Switched to Search (use context menu for Analysis).");
}

TEST_F(AppCommands, DuplicatesAreEnteredAndLeftForSearch) {
  Add(AppMode::kDuplicates);
  EXPECT_TRUE(Run(kCommandDuplicates));
  EXPECT_EQ(app.appMode, AppMode::kDuplicates);
  EXPECT_EQ(pump.status, u"Switched to Duplicate Files (right-click to switch modes).");
  EXPECT_TRUE(Run(kCommandSearch));
  EXPECT_EQ(app.appMode, AppMode::kSearch);
}

TEST_F(AppCommands, ARefreshWithoutADriveToBeRefreshedDoesNothing) {
  pump.status = u"before";
  EXPECT_TRUE(Run(kCommandRefreshNonNtfs));
  EXPECT_EQ(pump.status, u"before");
}

TEST_F(AppCommands, OthersAreLeftToTheView) {
  EXPECT_FALSE(Run(kCommandOpen));
  EXPECT_FALSE(Run(0));
}

TEST_F(AppCommands, KeysOfTheListRunInSearchAlone) {
  Add(AppMode::kAnalysis);
  pump.Show(AppMode::kAnalysis);
  for (const uint32_t key : {13u, 46u, 113u}) EXPECT_FALSE(pump.Key(key)) << key;
  for (const char16_t letter : u"CXD") EXPECT_FALSE(pump.Key({.key = letter, .ctrl = true}));
  EXPECT_TRUE(pump.commands.empty());
  EXPECT_EQ(app.search.list.selection.rows.size(), 1u);
  pump.Show(AppMode::kSearch);
  EXPECT_TRUE(pump.Key(46));
  EXPECT_EQ(pump.commands, std::vector<uint16_t>{kCommandRecycle});
}

TEST_F(AppCommands, AChoiceOfTheMenuIsRun) {
  const Rect row = app.search.rows.PlaceOf(1);
  pump.chosen = kCommandViewSmallIcons;
  pump.Send({.kind = Mouse::kRight, .at = {row.left + 5, row.top + 5}});
  ASSERT_EQ(pump.opened.size(), 1u);
  EXPECT_EQ(pump.commands, std::vector<uint16_t>{kCommandViewSmallIcons});
  EXPECT_EQ(CurrentWindowSettings.viewMode, 1);
}

}  // namespace
}  // namespace quilmark
