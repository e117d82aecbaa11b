#include "shell/app/window_timers.h"

#include <gtest/gtest.h>

#include "shell/app/engine_messages.h"
#include "shell/app/routing.h"
#include "shell/app/window_events.h"
#include "shell/search/list_scroll.h"
#include "shell/view/window_ids.h"
#include "shell/window_harness.h"
#include "support/mapped_drive.h"

namespace quilmark {
namespace {

class WindowTimers : public testing::Test {
 protected:
  bool Fire(uint32_t id) {
    window.timers[id] = 1;  // armed, as a timer that fires is
    return harness.Carry(RouteTimer(app, harness.Context(), id));
  }

  void AskFor(const Rect& part, uint64_t nowMs) {
    const ViewContext context = harness.Context(nowMs);
    harness.Carry(RequestRepaintOf(app.search.repaint, context, app.search.ListArea(context), part, 16));
  }
  void AskForAll(uint64_t nowMs) {
    harness.Carry(RequestListRepaint(app.search, harness.Context(nowMs), 16));
  }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
  AppState& app = harness.app;
};

TEST_F(WindowTimers, UnknownOnesAreNotTaken) {
  EXPECT_FALSE(harness.Carry(RouteTimer(app, harness.Context(), 30'001)));
  EXPECT_FALSE(harness.Carry(RouteTimer(app, harness.Context(), 30'016)));
  EXPECT_TRUE(window.calls.empty());
}

TEST_F(WindowTimers, FireOnceUnlessTheyRepeat) {
  const HeldJob prewarming(Engine().prewarming);
  window.trayWorks = false;
  for (const uint32_t id : {30003u, 30008u, 30010u, 30011u, 30014u}) {
    EXPECT_TRUE(Fire(id));
    EXPECT_EQ(window.timers.count(id), 0u) << id;
  }
  for (const uint32_t id : {30002u, 30007u, 30009u}) {
    EXPECT_TRUE(Fire(id));
    EXPECT_EQ(window.timers.count(id), 1u) << id;
  }
}

TEST_F(WindowTimers, TheTrayIconIsTriedUntilItIsThere) {
  window.trayWorks = false;
  Fire(30002);
  EXPECT_EQ(window.timers.count(30002), 1u);
  window.trayWorks = true;
  Fire(30002);
  EXPECT_EQ(window.timers.count(30002), 0u);
  EXPECT_EQ(window.Count("AddOrUpdateTrayIcon"), 2u);
}

TEST_F(WindowTimers, TheDebounceSearchesForTheLastText) {
  Engine().ready = true;
  TheSearch().CurrentQueryText = u"needle";
  const uint64_t before = SearchNumber();
  Fire(30003);
  EXPECT_EQ(SearchNumber(), before + 1);
  EXPECT_EQ(harness.search.Next().first, before + 1);
}

TEST_F(WindowTimers, AScrollingListSettlesLater) {
  app.search.thumbDragging = true;
  Fire(30004);
  EXPECT_EQ(window.timers.at(30004), 80u);
  EXPECT_TRUE(harness.engine.requested.empty());
  app.search.thumbDragging = false;
  Fire(30004);
  EXPECT_EQ(window.timers.count(30004), 0u);
  EXPECT_EQ(harness.engine.requested.size(), 1u);
  EXPECT_EQ(window.timers.at(30014), 80u);
}

TEST_F(WindowTimers, AListScrollsFor350MillisecondsAfterAStep) {
  app.search.lastScrollTick = 1'000;
  EXPECT_TRUE(IsScrolling(app.search, 1'349));
  EXPECT_FALSE(IsScrolling(app.search, 1'350));
}

TEST_F(WindowTimers, AHiddenStartStaysHiddenAndGoesOnTrying) {
  // A letter without a folder, so that those of the machine are not seen.
  const MappedDrive none(u'B', harness.config.folder.PathOf(u"none"));
  app.hiddenStart = true;
  window.isVisible = false;
  Fire(30005);
  EXPECT_EQ(window.timers.at(30005), 5'000u);
  EXPECT_EQ(window.Count("AddOrUpdateTrayIcon"), 1u);
  EXPECT_EQ(harness.search.Next().message, WM_VOLUMES_SYNCED);
}

TEST_F(WindowTimers, AHiddenStartThatBecameVisibleIsHiddenAgain) {
  app.hiddenStart = true;
  Engine().ready = true;
  Fire(30005);
  EXPECT_FALSE(window.isVisible);
  EXPECT_EQ(window.timers.count(30005), 0u);
}

TEST_F(WindowTimers, AWindowThatTheUserOpenedStaysOpen) {
  app.hiddenStart = true;
  app.shownByUser = true;
  Engine().ready = true;
  Fire(30005);
  EXPECT_TRUE(window.isVisible);
}

TEST_F(WindowTimers, AVisibleWindowWithoutAVolumeGoesOnTrying) {
  const MappedDrive none(u'B', harness.config.folder.PathOf(u"none"));
  Fire(30005);
  EXPECT_EQ(window.timers.at(30005), 5'000u);
  EXPECT_TRUE(WaitForBackgroundJobs(60'000));
}

TEST_F(WindowTimers, TheSearchForAVolumeGoesOnRoundAfterRoundUntilThereIsOne) {
  const MappedDrive none(u'B', harness.config.folder.PathOf(u"none"));
  for (int round = 0; round < 3; ++round) {
    Fire(30005);
    EXPECT_EQ(window.timers.at(30005), 5'000u);
    EXPECT_EQ(harness.search.Next().message, WM_VOLUMES_SYNCED);
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  }
  Engine().ready = true;
  Fire(30005);
  EXPECT_EQ(window.timers.count(30005), 0u);
  EXPECT_TRUE(harness.search.IsQuiet());
}

TEST_F(WindowTimers, AShowDoesNotEndTheSearchForAVolume) {
  const MappedDrive none(u'B', harness.config.folder.PathOf(u"none"));
  harness.Carry(RoutePosted(app, harness.Context(), {.message = WM_INDEX_STATE, .first = 1}));
  EXPECT_EQ(harness.search.Next().message, WM_VOLUMES_SYNCED);
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  ShowMainWindow(app, window);
  EXPECT_EQ(window.timers.count(30005), 0u);
  const PostedMessage settled = harness.search.Next();  // looked at once
  EXPECT_EQ(settled.message, WM_VOLUMES_SYNCED);
  harness.Carry(RoutePosted(app, harness.Context(), settled));
  EXPECT_EQ(window.timers.at(30005), 5'000u);
  EXPECT_TRUE(WaitForBackgroundJobs(60'000));
}

TEST_F(WindowTimers, AShowAsksForNoVolumeWhereOneIsReadyOrTheStartStillRuns) {
  ShowMainWindow(app, window);
  app.syncRetryArmed = true;
  Engine().ready = true;
  ShowMainWindow(app, window);
  EXPECT_TRUE(harness.search.IsQuiet());
}

TEST_F(WindowTimers, ASearchThatWaitsForAVolumeHasTheDrivesLookedForAgain) {
  TheSearch().CurrentQueryText = u"needle";
  Fire(30003);
  EXPECT_EQ(harness.engine.looks, 1);
  RetrySyncLater(app, window);
  EXPECT_EQ(window.timers.at(30005), 5'000u);
  window.timers[30005] = 1;  // it runs
  RetrySyncLater(app, window);
  EXPECT_EQ(window.timers.at(30005), 1u) << "it would never fire";
}

TEST_F(WindowTimers, AReadyEngineIsNotSynced) {
  Engine().ready = true;
  Fire(30005);
  EXPECT_TRUE(harness.search.IsQuiet());
  EXPECT_EQ(window.timers.count(30005), 0u);
}

TEST_F(WindowTimers, ThePrewarmEndsWithTheEnginesFlag) {
  harness.engine.prewarmRuns = true;
  Fire(30006);
  EXPECT_TRUE(app.search.prewarmRunning);
  EXPECT_EQ(window.timers.at(30007), 500u);
  Fire(30007);
  EXPECT_TRUE(app.search.prewarmRunning);
  harness.engine.prewarming.reset();
  Fire(30007);
  EXPECT_FALSE(app.search.prewarmRunning);
  EXPECT_EQ(app.search.prewarmRounds, 0);
  EXPECT_EQ(window.timers.count(30007), 0u);
  EXPECT_FALSE(app.search.repaint.isPending) << "nothing was missing";
}

TEST_F(WindowTimers, ThePrewarmBlocksSortingForSixtyRoundsAtMost) {
  harness.engine.prewarmRuns = true;
  Fire(30006);
  for (int round = 1; round < 60; ++round) Fire(30007);
  EXPECT_TRUE(app.search.prewarmRunning);
  Fire(30007);
  EXPECT_FALSE(app.search.prewarmRunning);
}

TEST_F(WindowTimers, APrewarmThatBeginsAnewHasAllItsRounds) {
  harness.engine.prewarmRuns = true;
  Fire(30006);
  for (int round = 1; round < 60; ++round) Fire(30007);
  Fire(30006);  // a drive has come
  for (int round = 1; round < 60; ++round) Fire(30007);
  EXPECT_TRUE(app.search.prewarmRunning);
  Fire(30007);
  EXPECT_FALSE(app.search.prewarmRunning);
}

TEST_F(WindowTimers, ThePrewarmingsEndDrawsWhatWasMissing) {
  app.search.paintedMissing = true;
  Fire(30006);
  Fire(30007);
  EXPECT_TRUE(app.search.repaint.isPending);
}

TEST_F(WindowTimers, ARepaintAndARecountNeedARequest) {
  Fire(30014);
  Fire(30008);
  EXPECT_EQ(window.Count("InvalidateList"), 0u);
  EXPECT_EQ(harness.engine.recounts, 0);
  app.search.repaint.isPending = true;
  app.search.filterCountsPending = true;
  for (int i = 0; i < 2; ++i) {
    Fire(30014);
    Fire(30008);
  }
  EXPECT_EQ(window.Count("InvalidateList"), 1u);
  EXPECT_EQ(harness.engine.recounts, 1);
}

TEST_F(WindowTimers, ARepaintOfPartsIsOfAllThatWasAskedFor) {
  constexpr Rect kRow = {0, 100, 500, 144}, kNext = {0, 144, 500, 188};
  AskFor(kRow, 1'000);
  AskFor(kNext, 1'001);
  Fire(30014);
  EXPECT_EQ(window.invalidated, (Rect{0, 100, 500, 188}));
  EXPECT_EQ(window.Count("InvalidateList"), 0u);
  window.invalidated = {};
  AskFor(kRow, 1'002);
  Fire(30014);
  EXPECT_EQ(window.invalidated, kRow) << "the former request is answered";
}

TEST_F(WindowTimers, ARepaintOfAPartTakesNothingFromOneOfAll) {
  constexpr Rect kRow = {0, 100, 500, 144};
  AskFor(kRow, 1'000);
  AskForAll(1'000);
  Fire(30014);
  AskForAll(1'001);
  AskFor(kRow, 1'001);
  Fire(30014);
  EXPECT_EQ(window.Count("InvalidateList"), 2u);
  EXPECT_EQ(window.Count("Invalidate"), 0u);
}

// The mouse goes over row after row, and each request puts the answer off.
TEST_F(WindowTimers, RepaintsOfPartsThatDoNotCeaseAreAnsweredMeanwhile) {
  for (int row = 0; row < 10; ++row) {
    AskFor({0, 44 * row, 500, 44 * row + 44}, 1'000 + static_cast<uint64_t>(8 * row));
  }
  EXPECT_GE(window.Count("Invalidate"), 2u);
  EXPECT_EQ(window.Count("InvalidateList"), 0u);
  window.invalidated = {};
  AskFor({0, 440, 500, 484}, 1'090);
  Fire(30014);
  EXPECT_EQ(window.invalidated.bottom, 484);
  EXPECT_GT(window.invalidated.top, 0) << "what was drawn meanwhile is not drawn again";
}

TEST_F(WindowTimers, NothingIsSavedDuringTheEnd) {
  Fire(30009);
  EXPECT_EQ(harness.engine.autosaves, 1);
  ShutdownRequested = true;
  Fire(30009);
  EXPECT_EQ(harness.engine.autosaves, 1);
}

TEST_F(WindowTimers, IdlenessAndDoneWorkTrim) {
  Fire(30010);
  Fire(30011);
  EXPECT_EQ(window.Count("TrimSelf"), 2u);
}

}  // namespace
}  // namespace quilmark
