#include "shell/app/window_events.h"

#include <gtest/gtest.h>

#include "platform/text_file.h"
#include "shell/app/routing.h"
#include "shell/search/search_controls.h"
#include "shell/search/search_keys.h"
#include "shell/view/window_ids.h"
#include "shell/window_harness.h"
#include "support/environment.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

class WindowEvents : public testing::Test {
 protected:
  // With the editor of a name open.
  void Close() {
    app.search.renaming.emplace();
    CloseWindowRequest(app, harness.Context());
    EXPECT_FALSE(app.search.renaming);
  }
  void Type(const std::u16string& text) {
    harness.Carry(TakeTypedText(app.search, harness.Context(), text));
  }
  bool Press(uint32_t key, const std::u16string& text) {
    return harness.Carry(TakeSearchKey(harness.Context(), key, text));
  }
  void Choose(int scope) {
    harness.Carry(app.search.OnControl({.kind = ControlEvent::kChosen, .id = kScopeBox, .value = scope},
                                       harness.Context()));
  }
  void AddDrive(std::u16string_view drive) { AddVolume(Engine(), MakeTestVolume(drive)); }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
  AppState& app = harness.app;
};

TEST_F(WindowEvents, ACloseHidesWhereTheTrayIconStands) {
  Engine().ready = true;
  app.trayIconAdded = true;
  Close();
  EXPECT_EQ(window.calls, (Calls{"CloseEditor", "InvalidateList", "TrimSelf", "Hide"}));
}

TEST_F(WindowEvents, ACloseEndsTheProgramWithoutATrayIcon) {
  Engine().ready = true;
  Close();
  EXPECT_EQ(window.calls, (Calls{"CloseEditor", "InvalidateList", "Destroy"}));
  window.calls.clear();
  OnTaskbarCreated(app, window, 0);
  Close();
  EXPECT_EQ(window.calls,
            (Calls{"AddOrUpdateTrayIcon", "CloseEditor", "InvalidateList", "TrimSelf", "Hide"}));
}

TEST_F(WindowEvents, ACloseEndsTheProgramBeforeAVolumeIsReady) {
  app.trayIconAdded = true;
  app.closeBoxPressed = true;
  Close();
  EXPECT_EQ(window.calls, (Calls{"CloseEditor", "InvalidateList", "Destroy"}));
  EXPECT_FALSE(app.closeBoxPressed);
}

TEST_F(WindowEvents, ACloseDuringAHiddenStartKeepsTheRun) {
  app.hiddenStart = true;
  app.closeBoxPressed = true;
  Close();
  EXPECT_EQ(window.calls, (Calls{"CloseEditor", "InvalidateList", "TrimSelf", "Hide"}));
  EXPECT_FALSE(app.closeBoxPressed);
}

TEST_F(WindowEvents, AHiddenStartEndsWithTheSystem) {
  app.hiddenStart = true;
  window.systemShutsDown = true;
  Close();
  EXPECT_EQ(window.calls, (Calls{"CloseEditor", "InvalidateList", "Destroy"}));
}

TEST_F(WindowEvents, TheMenusExitEndsTheProgram) {
  Engine().ready = true;
  app.trayIconAdded = true;
  app.exitRequested = true;
  Close();
  EXPECT_EQ(window.calls, (Calls{"CloseEditor", "InvalidateList", "Destroy"}));
}

TEST_F(WindowEvents, TheCloseButtonLeavesACleanWindow) {
  Engine().ready = true;
  app.trayIconAdded = true;
  app.closeBoxPressed = true;
  harness.HoldResults(100);
  FollowNewResults(KeepFiltered::kNo, 100);
  app.search.rows.scrollY = 440;
  SelectOnly(app.search.list.selection, 3);
  window.texts[kQueryBox] = u"needle";
  TheSearch().CurrentQueryText = u"needle";
  TheSearch().scope.scopeIndex = kScopeDesktop;
  Close();
  EXPECT_EQ(window.texts[kQueryBox], u"");
  EXPECT_EQ(TheSearch().CurrentQueryText, u"");
  EXPECT_EQ(app.search.rows.scrollY, 0);
  EXPECT_EQ(app.search.list.selection.focusRow, -1);
  EXPECT_EQ(TheSearch().scope.scopeIndex, kScopeAll);
  EXPECT_FALSE(app.closeBoxPressed);
  EXPECT_FALSE(window.isVisible);
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
}

// Enter in an empty box lists the whole index, and so do the Desktop and a refresh.
TEST_F(WindowEvents, TheCloseButtonBringsTheRecentFilesBack) {
  auto recent = std::make_shared<ResultSet>(1);
  TheSearch().hooks.recentResults = [recent] { return recent; };
  Engine().ready = true;
  app.trayIconAdded = true;
  Press(kKeyEnter, u"");
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
  Close();  // of another source
  EXPECT_TRUE(TheSearch().SuppressRecentView);
  app.closeBoxPressed = true;
  Close();
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
  EXPECT_EQ(HeldResults(), recent);
  EXPECT_FALSE(TheSearch().SuppressRecentView);
}

TEST_F(WindowEvents, AnyOtherCloseKeepsTheView) {
  Engine().ready = true;
  app.trayIconAdded = true;
  app.search.rows.scrollY = 440;
  window.texts[kQueryBox] = u"needle";
  TheSearch().scope.scopeIndex = kScopeDesktop;
  Close();
  EXPECT_EQ(window.texts[kQueryBox], u"needle");
  EXPECT_EQ(app.search.rows.scrollY, 440);
  EXPECT_EQ(TheSearch().scope.scopeIndex, kScopeDesktop);
}

TEST_F(WindowEvents, TheCloseButtonKeepsTheScopeOfAVolume) {
  Engine().ready = true;
  app.trayIconAdded = true;
  app.closeBoxPressed = true;
  TheSearch().scope.scopeIndex = kScopeFirstVolume;
  Close();
  EXPECT_EQ(TheSearch().scope.scopeIndex, kScopeFirstVolume);
}

TEST_F(WindowEvents, TheHotkeyHidesAVisibleWindow) {
  ToggleWindow(app, window);
  EXPECT_EQ(window.calls, (Calls{"Hide", "TrimSelfInJob"}));
  CurrentWindowSettings.globalTrimOnToggle = true;
  window.calls.clear();
  window.isVisible = true;
  ToggleWindow(app, window);
  EXPECT_EQ(window.calls, (Calls{"Hide", "TrimSelfInJob", "TrimOthersInJob"}));
}

TEST_F(WindowEvents, TheHotkeyShowsAHiddenWindow) {
  window.isVisible = false;
  ToggleWindow(app, window);
  EXPECT_EQ(window.calls, (Calls{"AddOrUpdateTrayIcon", "StopTimer 30005", "ShowAndRaise"}));
  EXPECT_TRUE(app.shownByUser);
  EXPECT_TRUE(harness.search.IsQuiet());
}

TEST_F(WindowEvents, TheFirstShowRunsTheSearchThatAHiddenStartLeft) {
  app.firstSearchDeferred = true;
  ShowMainWindow(app, window);
  EXPECT_FALSE(app.firstSearchDeferred);
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30006, 1'200}}));
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
}

TEST_F(WindowEvents, AnActiveWindowHasTheFocusInTheSearchBox) {
  harness.Carry(OnActivation(app, harness.Context(), Activation::kActivated));
  EXPECT_EQ(window.calls, (Calls{"StopTimer 30010", "FocusSearchBox"}));
  harness.Carry(OnActivation(app, harness.Context(), Activation::kDeactivated));
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30010, 30'000}}));
}

// A temporary folder of its own, where the diagnostic log lies.
struct ScratchTemp {
  std::u16string Log() const { return ReadTextFile(folder.PathOf(u"Quilmark_gdi.log")).value_or(u""); }
  ScratchFolder folder;
  ScopedEnvironment posix{"TMPDIR", folder.HostPath().string()};
  ScopedEnvironment windows{"TMP", folder.HostPath().string()};
};

TEST_F(WindowEvents, AShellThatWasStartedAgainIsSaidOnceASecondAtMost) {
  OnTaskbarCreated(app, window, 5'000);
  for (uint64_t now = 5'000; now < 5'999; ++now) OnTaskbarCreated(app, window, now);
  EXPECT_EQ(window.calls, Calls{"AddOrUpdateTrayIcon"});
  window.calls.clear();
  OnTaskbarCreated(app, window, 6'000);
  EXPECT_EQ(window.Count("AddOrUpdateTrayIcon"), 1u);
  EXPECT_TRUE(window.timers.empty());
}

TEST_F(WindowEvents, TheLastWordOfAShellIsNotLost) {
  OnTaskbarCreated(app, window, 5'000);
  EXPECT_TRUE(window.timers.empty());
  for (const uint64_t now : {5'400u, 5'900u}) OnTaskbarCreated(app, window, now);
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30015, 600}}));
  EXPECT_TRUE(harness.Carry(RouteTimer(app, harness.Context(), 30015)));
  EXPECT_EQ(window.Count("AddOrUpdateTrayIcon"), 2u);
  EXPECT_TRUE(window.timers.empty());
}

TEST_F(WindowEvents, OnlyAShellThatHadLostTheIconLeavesALine) {
  const ScratchTemp temp;
  window.trayStands = true;
  OnTaskbarCreated(app, window, 5'000);
  EXPECT_EQ(temp.Log(), u"");
  window.trayStands = false;
  OnTaskbarCreated(app, window, 7'000);
  EXPECT_NE(temp.Log().find(u"TaskbarCreated received"), std::u16string::npos);
  EXPECT_TRUE(app.trayIconAdded);
}

TEST_F(WindowEvents, TypingDebouncesToOneSearch) {
  const uint64_t before = SearchNumber();
  for (const auto* text : {u"n", u"ne", u"nee"}) Type(text);
  EXPECT_EQ(TheSearch().CurrentQueryText, u"nee");
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30003, 260}}));
  EXPECT_EQ(SearchNumber(), before);
}

// The names in view are marked by what stands in the box, whenever the results come.
TEST_F(WindowEvents, AnotherTermDrawsTheNamesAnew) {
  Type(u"n");
  EXPECT_EQ(window.Count("InvalidateList"), 1u);
  Type(u" N ");
  Type(u"s:n|txt");
  EXPECT_EQ(window.Count("InvalidateList"), 1u) << "the same term";
  Type(u"s:ne|txt");
  EXPECT_EQ(window.Count("InvalidateList"), 2u);
}

TEST_F(WindowEvents, AContentQueryWaitsForEnter) {
  Type(u"n");
  Type(u" S:needle");
  EXPECT_EQ(TheSearch().CurrentQueryText, u" S:needle");
  EXPECT_TRUE(window.timers.empty());
}

TEST_F(WindowEvents, EnterSearchesAtOnce) {
  Engine().ready = true;
  window.timers[30003] = 260;
  EXPECT_TRUE(Press(kKeyEnter, u" needle "));
  EXPECT_TRUE(window.timers.empty());
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
}

TEST_F(WindowEvents, EnterInAnEmptyBoxListsTheWholeIndex) {
  Engine().ready = true;
  EXPECT_TRUE(Press(kKeyEnter, u"  "));
  EXPECT_TRUE(TheSearch().SuppressRecentView);
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
}

TEST_F(WindowEvents, EscapeEndsAContentSearchAndNothingElse) {
  const uint64_t before = SearchNumber();
  EXPECT_FALSE(Press(kKeyEscape, u"needle"));
  EXPECT_EQ(SearchNumber(), before);
  EXPECT_TRUE(Press(kKeyEscape, u"s:needle"));
  EXPECT_EQ(SearchNumber(), before + 1);
  EXPECT_EQ(window.status, u"Content search canceled.");
  EXPECT_FALSE(Press(u'A', u"s:needle"));
}

TEST_F(WindowEvents, ANewScopeTakesEffectWithTheNextSearch) {
  window.timers[30003] = 260;
  const uint64_t before = SearchNumber();
  Choose(2);
  EXPECT_EQ(TheSearch().scope.scopeIndex, 2);
  EXPECT_TRUE(window.timers.empty());
  EXPECT_EQ(SearchNumber(), before);
  Choose(-1);
  EXPECT_EQ(TheSearch().scope.scopeIndex, 2);
}

TEST_F(WindowEvents, AnEjectReleasesTheVolumeAtOnce) {
  AddDrive(u"Q:");
  for (const auto event : {DriveEvent::kQueryRemove, DriveEvent::kRemovePending}) {
    Engine().volumes.front()->valid = true;
    window.status.clear();
    OnDriveEvent(app, harness.Context(), static_cast<uint32_t>(event), 1u << 16);
    EXPECT_FALSE(Engine().volumes.front()->valid);
    EXPECT_EQ(window.status, u"Drive eject detected. Handles released proactively.");
    EXPECT_EQ(harness.search.Next().message, WM_VOLUME_LOST);
  }
}

TEST_F(WindowEvents, ARemovalSearchesAgain) {
  AddDrive(u"Q:");
  window.texts[kQueryBox] = u"needle";
  OnDriveEvent(app, harness.Context(), static_cast<uint32_t>(DriveEvent::kRemoveComplete), 1u << 16);
  EXPECT_EQ(window.Count("SetItems 104"), 1u);
  EXPECT_EQ(window.status, u"A disk was removed. The drive selection was updated automatically.");
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
}

TEST_F(WindowEvents, AnotherDrivesEventsChangeNothing) {
  AddDrive(u"Q:");
  for (const uint32_t event : {32769u, 32771u, 32772u}) {
    OnDriveEvent(app, harness.Context(), event, 1u << 15);
    OnDriveEvent(app, harness.Context(), event, std::nullopt);
  }
  OnDriveEvent(app, harness.Context(), 7, 1u << 16);
  EXPECT_TRUE(Engine().volumes.front()->valid);
  EXPECT_EQ(window.status, u"before");
  EXPECT_TRUE(window.calls.empty());
}

TEST_F(WindowEvents, DrivesAreLeftAloneDuringTheEnd) {
  AddDrive(u"Q:");
  ShutdownRequested = true;
  OnDriveEvent(app, harness.Context(), 32769, 1u << 16);
  EXPECT_TRUE(Engine().volumes.front()->valid);
}

struct NoticeOfTest : DeviceNotice {
  explicit NoticeOfTest(uintptr_t number) { id = number; }
};

constexpr uintptr_t kNotice = 77;

class NoticeEvents : public WindowEvents {
 protected:
  NoticeEvents() {
    AddDrive(u"Q:");
    Engine().volumes.front()->follower.ReplaceNotice(std::make_shared<NoticeOfTest>(kNotice));
  }
  bool IsSearched() { return Engine().volumes.front()->valid; }
};

TEST_F(NoticeEvents, AVolumeThatSomebodyWantsIsGivenBackAtOnce) {
  OnVolumeNotice(app, harness.Context(), VolumeNotice::kWanted, kNotice);
  EXPECT_FALSE(IsSearched());
  EXPECT_EQ(window.status, u"Drive eject detected. Handles released proactively.");
  EXPECT_EQ(harness.search.Next().message, WM_VOLUME_LOST);
}

TEST_F(NoticeEvents, AVolumeThatIsFreeAgainIsLookedForAgain) {
  // A letter without a folder: those of the machine are not seen, and walked for minutes.
  const MappedDrive none(u'B', harness.config.folder.PathOf(u"none"));
  OnVolumeNotice(app, harness.Context(), VolumeNotice::kFree, kNotice);
  EXPECT_TRUE(harness.search.IsQuiet()) << "nobody took it";
  Engine().volumes.front()->valid = false;
  OnVolumeNotice(app, harness.Context(), VolumeNotice::kFree, kNotice);
  EXPECT_EQ(harness.search.Next().message, WM_VOLUMES_SYNCED);
  EXPECT_TRUE(WaitForBackgroundJobs(60'000));
}

TEST_F(NoticeEvents, AVolumeThatIsGoneIsSearchedNoMore) {
  OnVolumeNotice(app, harness.Context(), VolumeNotice::kGone, kNotice);
  EXPECT_FALSE(IsSearched());
  EXPECT_EQ(window.Count("SetItems 104"), 1u);
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
}

TEST_F(NoticeEvents, AnotherVolumesNoticesChangeNothing) {
  for (const auto notice : {VolumeNotice::kWanted, VolumeNotice::kFree, VolumeNotice::kGone}) {
    OnVolumeNotice(app, harness.Context(), notice, kNotice + 1);
  }
  ShutdownRequested = true;
  OnVolumeNotice(app, harness.Context(), VolumeNotice::kWanted, kNotice);
  EXPECT_TRUE(IsSearched());
  EXPECT_EQ(window.status, u"before");
  EXPECT_TRUE(window.calls.empty());
}

}  // namespace
}  // namespace quilmark
