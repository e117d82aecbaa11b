#include "shell/search/result_messages.h"

#include <gtest/gtest.h>

#include "shell/app/routing.h"
#include "shell/search/columns.h"
#include "shell/search/filter_request.h"
#include "shell/view/window_ids.h"
#include "shell/window_harness.h"
#include "support/mapped_drive.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

using Sorts = std::vector<std::pair<int, Direction>>;

constexpr int64_t kFinal = 0, kSorted = 1, kPartial = 2;

class ResultMessages : public testing::Test {
 protected:
  bool Take(uint32_t message, uint64_t first = 0, int64_t second = 0) {
    return harness.Carry(RoutePosted(app, harness.Context(), {message, first, second}));
  }
  bool TakeResults(int64_t kind) { return Take(WM_SEARCH_RESULTS, SearchNumber(), kind); }
  // Two of the rows pass a filter that is on.
  void HoldFiltered() {
    TheSearch().ActiveCategory = 1;
    TheSearch().FilteredResults.Change([this](FilteredRows& shown) {
      shown.rows = std::make_shared<const ResultSet>(harness.Rows(2));
      shown.FilteredKey.category = 1;
    });
  }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
  AppState& app = harness.app;
};

TEST_F(ResultMessages, FinalResultsShowTheirCount) {
  harness.HoldResults(1'234);
  EXPECT_TRUE(TakeResults(kFinal));
  EXPECT_EQ(window.title, u"Quilmark - 1234 results found");
  EXPECT_EQ(window.status, u"Filter: All Files | Hits: 1234");
  EXPECT_EQ(DisplayCount(), 1'234u);
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30008, 60}, {30011, 1'800}}));
  EXPECT_EQ(window.calls, (std::vector<std::string>{"SyncBars", "Rehover", "InvalidateList"}));
}

TEST_F(ResultMessages, PartialResultsSayThatMoreAreToCome) {
  harness.HoldResults(3'000);
  EXPECT_TRUE(TakeResults(kPartial));
  EXPECT_EQ(window.title, u"Quilmark - 3000+ results found...");
  EXPECT_EQ(window.status, u"Searching... showing 3000 results");
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30014, 100}}));
  EXPECT_TRUE(app.search.repaint.isPending);
}

TEST_F(ResultMessages, ARestingListIsAskedForAttributesThenForThumbnailsThenPainted) {
  app.systemDpi = 144;
  CurrentWindowSettings.viewMode = static_cast<int>(ViewMode::kLargeIcons);
  harness.HoldResults(1'000);
  TakeResults(kFinal);
  window.timers.clear();
  harness.Carry(SettleScroll(app.search, harness.Context(1'000'000)));
  EXPECT_EQ(harness.engine.asked, (std::vector<std::string>{"attributes", "thumbnails"}));
  ASSERT_EQ(harness.engine.pictured.size(), 1u);
  const auto [range, size] = harness.engine.pictured[0];
  EXPECT_EQ(size, 72);
  EXPECT_EQ(range.first, harness.engine.requested.at(0).first);
  EXPECT_EQ(range.end, harness.engine.requested.at(0).end);
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{kTimerRepaint, 80}}));
}

TEST_F(ResultMessages, ThumbnailsAreForLargeIconsAlone) {
  harness.HoldResults(1'000);
  for (const ViewMode view : {ViewMode::kList, ViewMode::kSmallIcons}) {
    CurrentWindowSettings.viewMode = static_cast<int>(view);
    harness.Carry(SettleScroll(app.search, harness.Context(1'000'000)));
  }
  EXPECT_EQ(harness.engine.asked, (std::vector<std::string>{"attributes", "attributes"}));
}

TEST_F(ResultMessages, AMovingListIsAskedForNothing) {
  CurrentWindowSettings.viewMode = static_cast<int>(ViewMode::kLargeIcons);
  harness.HoldResults(1'000);
  app.search.lastScrollTick = 999'700;
  harness.Carry(SettleScroll(app.search, harness.Context(1'000'000)));
  EXPECT_TRUE(harness.engine.asked.empty());
  EXPECT_EQ(window.timers.at(kTimerScrollSettle), 80u);
}

TEST_F(ResultMessages, RecentFilesComeIntoAnEmptyBoxOnceTheyAreLoaded) {
  const uint64_t before = SearchNumber();
  window.texts[kQueryBox] = u"needle";
  EXPECT_TRUE(Take(WM_RECENT_LOADED));
  EXPECT_EQ(SearchNumber(), before);
  window.texts[kQueryBox] = u"";
  EXPECT_TRUE(Take(WM_RECENT_LOADED));
  EXPECT_EQ(SearchNumber(), before + 1);
}

TEST_F(ResultMessages, NoResultsEmptyTheStatus) {
  EXPECT_TRUE(TakeResults(kFinal));
  EXPECT_EQ(window.title, u"Quilmark - 0 results found");
  EXPECT_EQ(window.status, u"");
}

TEST_F(ResultMessages, StaleResultsLeaveSelectionAndScrollAlone) {
  harness.HoldResults(10);
  app.search.rows.scrollY = 440;
  SelectOnly(app.search.list.selection, 7);
  EXPECT_FALSE(Take(WM_SEARCH_RESULTS, SearchNumber() - 1, kFinal));
  EXPECT_EQ(app.search.rows.scrollY, 440);
  EXPECT_EQ(app.search.list.selection.focusRow, 7);
  EXPECT_EQ(window.title, u"before");
  EXPECT_TRUE(window.calls.empty());
  EXPECT_TRUE(window.timers.empty());
}

TEST_F(ResultMessages, FinalResultsBeginAtTheTop) {
  app.search.rows.scrollY = 440;
  SelectOnly(app.search.list.selection, 7);
  TakeResults(kFinal);
  EXPECT_EQ(app.search.rows.scrollY, 0);
  EXPECT_EQ(app.search.list.selection.focusRow, -1);
}

TEST_F(ResultMessages, PartialAndSortedResultsKeepTheScrollPositionAndNoSelection) {
  for (const int64_t kind : {kPartial, kSorted}) {
    harness.HoldResults(100);
    app.search.rows.scrollY = 440;
    SelectOnly(app.search.list.selection, 2);
    TakeResults(kind);
    EXPECT_EQ(app.search.rows.scrollY, 440);
    EXPECT_TRUE(app.search.list.selection.rows.empty()) << "its rows are numbers of the former order";
  }
}

TEST_F(ResultMessages, ASavedScrollPositionIsTakenOnceByFinalResults) {
  app.search.keepScrollOnce = true;
  app.search.savedScrollY = 880;
  harness.HoldResults(100);
  TakeResults(kPartial);
  EXPECT_TRUE(app.search.keepScrollOnce);
  TakeResults(kFinal);
  EXPECT_EQ(app.search.rows.scrollY, 880);
  TakeResults(kFinal);
  EXPECT_EQ(app.search.rows.scrollY, 0);
}

TEST_F(ResultMessages, ASavedScrollPositionIsNeverAboveTheTop) {
  app.search.keepScrollOnce = true;
  app.search.savedScrollY = -5;
  TakeResults(kFinal);
  EXPECT_EQ(app.search.rows.scrollY, 0);
}

TEST_F(ResultMessages, SortedResultsKeepTheFilteredCountUntilTheFilterReports) {
  HoldFiltered();
  harness.HoldResults(10);
  EXPECT_TRUE(TakeResults(kSorted));
  EXPECT_EQ(DisplayCount(), 2u);
  EXPECT_NE(FilteredSet(), nullptr);
  EXPECT_EQ(window.title, u"Quilmark - 2 results found");
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30011, 1'800}}));
}

TEST_F(ResultMessages, NewResultsDropTheFilteredSet) {
  HoldFiltered();
  harness.HoldResults(10);
  EXPECT_TRUE(TakeResults(kFinal));
  EXPECT_EQ(DisplayCount(), 10u);
  EXPECT_EQ(FilteredSet(), nullptr);
  EXPECT_EQ(TheSearch().FilteredResults.Get().FilteredKey, FilterKey{});
  EXPECT_EQ(window.status, u"Filter: Folders | Applying filter...");
  EXPECT_EQ(harness.engine.filtered, 1);
}

TEST_F(ResultMessages, SortedResultsWithoutAFilterCountThemselves) {
  harness.HoldResults(10);
  TakeResults(kSorted);
  EXPECT_EQ(DisplayCount(), 10u);
}

TEST_F(ResultMessages, PartialResultsAreFilteredOnlyUnderAFilter) {
  TakeResults(kPartial);
  EXPECT_EQ(harness.engine.filtered, 0);
  CurrentWindowSettings.sizePreset = 1;
  TakeResults(kPartial);
  EXPECT_EQ(harness.engine.filtered, 1);
}

TEST_F(ResultMessages, AFilterIsACategoryASizeOrATime) {
  EXPECT_FALSE(IsFilterActive());
  CurrentWindowSettings.timePreset = 2;
  EXPECT_TRUE(IsFilterActive());
  CurrentWindowSettings = {};
  TheSearch().ActiveCategory = 3;
  EXPECT_TRUE(IsFilterActive());
}

TEST_F(ResultMessages, AStatusOfTheSearchOfTheMomentBecomesTheTitle) {
  ASSERT_TRUE(PostText(harness.search.queue.Target(), WM_SEARCH_STATUS, SearchNumber(), u"Working"));
  EXPECT_TRUE(harness.Carry(RoutePosted(app, harness.Context(), harness.search.Next())));
  EXPECT_EQ(window.title, u"Working");
}

TEST_F(ResultMessages, AStaleStatusIsFreedAndChangesNoTitle) {
  ASSERT_TRUE(PostText(harness.search.queue.Target(), WM_SEARCH_STATUS, SearchNumber() - 1, u"Old"));
  EXPECT_TRUE(harness.Carry(RoutePosted(app, harness.Context(), harness.search.Next())));
  EXPECT_EQ(window.title, u"before");
}

TEST_F(ResultMessages, AFirstVolumeOpensTheSearchBox) {
  EXPECT_FALSE(Take(WM_INDEX_STATE, 0));  // the system's own handling follows
  EXPECT_TRUE(app.search.isBoxEnabled);
  EXPECT_TRUE(window.title.starts_with(u"Quilmark - "));
  EXPECT_EQ(window.Count("SetItems 104"), 1u);
  EXPECT_EQ(window.Count("FocusSearchBox"), 1u);
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30006, 7'000}, {30009, 20'000}}));
  EXPECT_FALSE(app.firstSearchDeferred);
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
}

TEST_F(ResultMessages, AHiddenStartLeavesTheFirstSearchToTheFirstShow) {
  app.hiddenStart = true;
  window.isVisible = false;
  Take(WM_INDEX_STATE, 0);
  EXPECT_TRUE(app.firstSearchDeferred);
  EXPECT_EQ(window.status,
            u"Background startup completed. Results and cache warmup will run when window is opened.");
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30009, 20'000}, {30010, 12'000}}));
  EXPECT_TRUE(harness.search.IsQuiet());
}

TEST_F(ResultMessages, AHiddenStartThatTheUserHasOpenedSearchesAtOnce) {
  app.hiddenStart = true;
  app.shownByUser = true;
  app.firstSearchDeferred = true;
  Take(WM_INDEX_STATE, 0);
  EXPECT_FALSE(app.firstSearchDeferred);
  EXPECT_EQ(window.timers,
            (std::map<uint32_t, uint32_t>{{30006, 7'000}, {30009, 20'000}, {30010, 12'000}}));
}

TEST_F(ResultMessages, AMissingVolumeIsTriedAgain) {
  // A letter without a folder: those of the machine are not seen, and walked for minutes.
  const MappedDrive none(u'B', harness.config.folder.PathOf(u"none"));
  Engine().ready = true;  // a new letter appeared: the wording is the same
  EXPECT_TRUE(Take(WM_INDEX_STATE, 1));
  EXPECT_EQ(window.status, u"Initialization incomplete. Retrying disk index loading in background...");
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30005, 5'000}}));
  EXPECT_EQ(harness.search.Next().message, WM_VOLUMES_SYNCED);
  EXPECT_TRUE(WaitForBackgroundJobs(60'000));
}

TEST_F(ResultMessages, FilterResultsShowTheirCount) {
  SetDisplayCount(12);
  SelectOnly(app.search.list.selection, 3);
  EXPECT_TRUE(Take(WM_FILTER_RESULTS));
  EXPECT_EQ(window.title, u"Quilmark - Filter: All Files | Hits: 12");
  EXPECT_EQ(window.status, u"");
  EXPECT_EQ(app.search.list.selection.focusRow, -1);
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30008, 80}, {30011, 2'200}, {30014, 60}}));
}

TEST_F(ResultMessages, AttributesOfTheRowsInViewAreRepaintedUnlessStale) {
  const uint64_t number = TheSearch().hydrationGeneration.Supersede().Number();
  EXPECT_TRUE(Take(WM_ATTRS_UPDATED, number - 1));
  EXPECT_TRUE(window.timers.empty());
  EXPECT_TRUE(Take(WM_ATTRS_UPDATED, number));
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30014, 100}}));
}

TEST_F(ResultMessages, AFileThatChangedOutOfViewPaintsNothing) {
  const uint64_t number = TheSearch().hydrationGeneration.Supersede().Number();
  EXPECT_TRUE(Take(WM_ATTRS_UPDATED, number, kSomeAreStale));
  EXPECT_TRUE(window.timers.empty());
  harness.engine.showsStale = true;
  EXPECT_TRUE(Take(WM_ATTRS_UPDATED, number, kSomeAreStale));
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30014, 100}}));
}

TEST_F(ResultMessages, ARefreshByHandSaysWhatItDid) {
  window.texts[kQueryBox] = u"x";
  EXPECT_TRUE(Take(WM_NON_NTFS_REFRESHED, 2, 0));
  EXPECT_EQ(window.status, u"Refreshed 2 non-NTFS volume indexes, see debug output");
  EXPECT_TRUE(Take(WM_NON_NTFS_REFRESHED, 2, 1));
  EXPECT_EQ(window.status, u"Refreshed 2 non-NTFS volumes, 1 failed, see debug output");
  EXPECT_TRUE(Take(WM_NON_NTFS_REFRESHED, 0, 3));
  EXPECT_EQ(window.status, u"Failed to refresh non-NTFS volume indexes, see debug output");
  EXPECT_EQ(window.Count("SetItems 104"), 3u);
}

TEST_F(ResultMessages, ARefreshByHandHoldsSortingBackWhileItPrewarms) {
  harness.engine.prewarmRuns = true;
  EXPECT_TRUE(Take(WM_NON_NTFS_REFRESHED, 0, 3));
  EXPECT_TRUE(app.search.prewarmRunning);
  EXPECT_EQ(window.timers.at(30007), 500u);
  harness.engine.prewarming.reset();
  EXPECT_TRUE(harness.Carry(RouteTimer(app, harness.Context(), 30007)));
  EXPECT_FALSE(app.search.prewarmRunning);
}

TEST_F(ResultMessages, ALostVolumeLeavesTheSearch) {
  auto volume = MakeTestVolume(u"Q:");  // no such drive
  AddVolume(Engine(), std::move(volume));
  EXPECT_TRUE(Take(WM_VOLUME_LOST));
  EXPECT_FALSE(Engine().volumes.front()->valid);
  EXPECT_EQ(window.Count("SetItems 104"), 1u);
  EXPECT_EQ(window.status, u"A disconnected disk was detected and its NTFS index was removed.");
}

TEST_F(ResultMessages, ALossOfNothingChangesNothing) {
  EXPECT_TRUE(Take(WM_VOLUME_LOST));
  EXPECT_EQ(window.status, u"before");
  EXPECT_TRUE(window.calls.empty());
}

TEST_F(ResultMessages, ANewDriveOpensTheSearchBoxAndSearchesAgain) {
  Engine().ready = true;
  EXPECT_TRUE(Take(WM_VOLUMES_SYNCED));
  EXPECT_TRUE(app.search.isBoxEnabled);
  EXPECT_EQ(window.Count("SetItems 104"), 1u);
  EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{30006, 5'000}}));
  EXPECT_EQ(window.status, u"A new disk was detected and the drive list was updated.");
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
}

TEST_F(ResultMessages, OnlyColumnsOfTheListAreSortedAgain) {
  EXPECT_FALSE(Take(WM_RESORT_RESULTS, 0, 1));
  EXPECT_FALSE(Take(WM_RESORT_RESULTS, 6, 1));
  EXPECT_TRUE(Take(WM_RESORT_RESULTS, 2, 0));
  EXPECT_FALSE(SortAscending());
  EXPECT_TRUE(Take(WM_RESORT_RESULTS, 5, 1));
  EXPECT_TRUE(SortAscending());
  EXPECT_EQ(harness.engine.sorts, (Sorts{{2, Direction::kKeep}, {5, Direction::kKeep}}));
}

TEST_F(ResultMessages, OtherMessagesAreNotTaken) {
  for (const uint32_t message : {0u, 1u, 1024u, 1034u, 1063u, 32'768u}) EXPECT_FALSE(Take(message));
}

}  // namespace
}  // namespace quilmark
