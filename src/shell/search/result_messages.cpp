#include "shell/search/result_messages.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <utility>

#include "config/product.h"
#include "config/translate.h"
#include "config/window_settings.h"
#include "index/search_engine.h"
#include "platform/clock.h"
#include "platform/format.h"
#include "search/filters.h"
#include "search/search_pipeline.h"
#include "shell/app/window_timers.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint32_t kAfterReadyPrewarmMs = 7'000, kAfterNewDiskPrewarmMs = 5'000;
constexpr uint32_t kAutosaveMs = 20'000, kHiddenTrimMs = 12'000;
constexpr uint32_t kFinalCountsMs = 60, kFilterCountsMs = 80;
constexpr uint32_t kResultsTrimMs = 1'800, kFilterTrimMs = 2'200;
constexpr uint32_t kFrameMs = 16;
constexpr size_t kLongestTitle = 127;  // units

template <typename... Arguments>
void SetTitleFrom(WindowPort& window, std::u16string_view key, std::u16string_view english,
                  const Arguments&... arguments) {
  std::u16string title = FormatText(TranslateOr(key, english), arguments...);
  if (title.size() > kLongestTitle) title.resize(kLongestTitle);
  window.SetTitle(title);
}

void SetStatusOf(WindowPort& window, std::u16string_view key, std::u16string_view english) {
  window.SetStatus(TranslateOr(key, english));
}

void RefreshFilterCountsSoon(AppState& app, WindowPort& window, uint32_t delayMs) {
  app.filterCountsPending = true;
  window.StartTimer(kTimerFilterCounts, delayMs);
}

std::u16string CountText(uint64_t count) { return FormatText(u"%llu", count); }

std::u16string CategoryName() {
  const auto table = CurrentCategories();
  const auto row = static_cast<size_t>(std::max(ActiveCategory.load(), 0));
  return row < table->size() ? (*table)[row].label : std::u16string();
}

void ShowResultTitle(WindowPort& window, ResultKind kind) {
  const auto shown = static_cast<int64_t>(DisplayCount.load());
  if (kind == ResultKind::kPartial) {
    return SetTitleFrom(window, u"Title_SearchPartialFmt", u"Quilmark - %lld+ results found...", shown);
  }
  SetTitleFrom(window, u"Title_SearchFinalFmt", u"Quilmark - %lld results found", shown);
}

std::u16string ResultStatus(ResultKind kind, uint64_t resultCount) {
  if (resultCount == 0) return {};
  if (kind == ResultKind::kPartial) {
    return TranslateOr(u"Status_SearchingShowingPrefix", u"Searching... showing ") +
           CountText(DisplayCount) + TranslateOr(u"Status_SearchingShowingSuffix", u" results");
  }
  if (ActiveCategory != 0) {
    return TranslateOr(u"Status_FilterApplyingPrefix", u"Filter: ") + CategoryName() +
           TranslateOr(u"Status_FilterApplyingSuffix", u" | Applying filter...");
  }
  return TranslateOr(u"Status_FilterHitsPrefix", u"Filter: ") + CategoryName() +
         TranslateOr(u"Status_FilterHitsMid", u" | Hits: ") + CountText(DisplayCount);
}

void ShowPartialResults(AppState& app, WindowPort& window) {
  if (IsFilterActive()) RunFeature(app.features.refreshFilter);
  window.RelayoutList();
  RequestListRepaint(app, window, 100, TickMs());
}

void ShowSortedResults(AppState& app, WindowPort& window) {
  RunFeature(app.features.refreshFilter);
  window.RelayoutList();
  window.InvalidateList();
  window.StartTimer(kTimerWorkTrim, kResultsTrimMs);
}

void ShowFinalResults(AppState& app, WindowPort& window, bool keepScroll) {
  RunFeature(app.features.refreshFilter);
  app.scrollY = keepScroll ? std::max<int64_t>(app.savedScrollY, 0) : 0;
  window.RelayoutList();
  window.InvalidateList();
  window.StartTimer(kTimerWorkTrim, kResultsTrimMs);
}

bool OnSearchResults(AppState& app, WindowPort& window, const PostedMessage& message) {
  if (message.first != searchGeneration) return false;
  const auto kind = static_cast<ResultKind>(message.second);
  window.CancelRename();
  if (kind != ResultKind::kPartial) app.shownGeneration = message.first;
  if (kind == ResultKind::kFinal) app.answeredText = CurrentQueryText;
  const bool keepScroll =
      kind == ResultKind::kPartial ? app.keepScrollOnce.load() : app.keepScrollOnce.exchange(false);
  ClearSelection(app.list.selection);
  const uint64_t count = HeldResults()->size();
  const bool keepsFiltered = kind == ResultKind::kSorted && IsFilterActive();
  FollowNewResults(keepsFiltered ? KeepFiltered::kIfThere : KeepFiltered::kNo, count);
  ShowResultTitle(window, kind);
  window.SetStatus(ResultStatus(kind, count));
  if (kind == ResultKind::kPartial) {
    ShowPartialResults(app, window);
  } else if (kind == ResultKind::kSorted) {
    ShowSortedResults(app, window);
  } else {
    RefreshFilterCountsSoon(app, window, kFinalCountsMs);
    ShowFinalResults(app, window, keepScroll);
  }
  return true;
}

// The receiver frees the text, also when nobody wants it any more.
bool OnSearchStatus(AppState&, WindowPort& window, const PostedMessage& message) {
  const auto text = TakeText(message);
  if (text != nullptr && message.first == searchGeneration) window.SetTitle(*text);
  return true;
}

void StartRetry(AppState& app, WindowPort& window) {
  SetStatusOf(window, u"Status_InitIncompleteRetry",
              u"Initialization incomplete. Retrying disk index loading in background...");
  SyncCurrentVolumesAsync(Engine(), app.mainWindow);
  app.syncRetryArmed = true;
  window.StartTimer(kTimerHiddenStart, kSyncRetryMs);
}

bool OnIndexState(AppState& app, WindowPort& window, const PostedMessage& message) {
  if (message.first == 1) {
    StartRetry(app, window);
    return true;
  }
  window.RebuildScopeBox();
  window.SetTitle(TranslateOr(u"App_TitleMainLower", kMainTitle));
  window.EnableSearchBox();
  window.FocusSearchBox();
  if (app.hiddenStart && !app.shownByUser && !window.IsVisible()) {
    app.firstSearchDeferred = true;
    SetStatusOf(
        window, u"Status_BackgroundStartupCompleted",
        u"Background startup completed. Results and cache warmup will run when window is opened.");
  } else {
    app.firstSearchDeferred = false;
    window.StartTimer(kTimerPrewarm, kAfterReadyPrewarmMs);
    DoSearchAsync(u"", false, true);
  }
  window.StartTimer(kTimerCacheAutosave, kAutosaveMs);
  if (app.hiddenStart) window.StartTimer(kTimerIdleTrim, kHiddenTrimMs);
  return false;
}

bool OnFilterResults(AppState& app, WindowPort& window, const PostedMessage&) {
  ClearSelection(app.list.selection);
  RefreshFilterCountsSoon(app, window, kFilterCountsMs);
  window.SetTitle(TranslateOr(u"App_FilterTitlePrefix", u"Quilmark - Filter: ") + CategoryName() +
                  TranslateOr(u"App_FilterTitleHitsSeparator", u" | Hits: ") + CountText(DisplayCount));
  window.SetStatus(u"");
  window.RelayoutList();
  RequestListRepaint(app, window, 60, TickMs());
  window.StartTimer(kTimerWorkTrim, kFilterTrimMs);
  return true;
}

bool OnRecentLoaded(AppState& app, WindowPort&, const PostedMessage&) {
  RunFeature(app.features.refreshRecentView);
  return true;
}

bool OnAttrsUpdated(AppState& app, WindowPort& window, const PostedMessage& message) {
  if (message.first != hydrationGeneration) return true;
  // A busy volume has stale files all the time, and hardly ever one in view.
  const bool isElsewhere = message.second == kSomeAreStale && app.features.showsStale != nullptr &&
                           !app.features.showsStale();
  if (!isElsewhere) RequestListRepaint(app, window, 100, TickMs());
  return true;
}

std::u16string RefreshedStatus(uint64_t refreshed, int64_t failed) {
  const std::u16string head =
      TranslateOr(u"Status_RefreshNonNtfsPrefix", u"Refreshed ") + CountText(refreshed);
  if (failed <= 0) {
    return head + TranslateOr(u"Status_RefreshNonNtfsSingleSuffix",
                              u" non-NTFS volume indexes, see debug output");
  }
  return head + TranslateOr(u"Status_RefreshNonNtfsFailedMid", u" non-NTFS volumes, ") +
         CountText(static_cast<uint64_t>(failed)) +
         TranslateOr(u"Status_RefreshNonNtfsFailedSuffix", u" failed, see debug output");
}

bool OnNonNtfsRefreshed(AppState& app, WindowPort& window, const PostedMessage& message) {
  window.RebuildScopeBox();
  StartPrewarm(app, window);
  if (message.first < 1) {
    SetStatusOf(window, u"Status_RefreshNonNtfsFailed",
                u"Failed to refresh non-NTFS volume indexes, see debug output");
    return true;
  }
  RefreshSearchResultsAfterIndexUpdate();
  window.SetStatus(RefreshedStatus(message.first, message.second));
  return true;
}

bool OnVolumeLost(AppState&, WindowPort& window, const PostedMessage&) {
  if (!RemoveUnavailableVolumes(Engine())) return true;
  window.RebuildScopeBox();
  SearchAgain(window);
  SetStatusOf(window, u"Status_NtfsIndexRemoved",
              u"A disconnected disk was detected and its NTFS index was removed.");
  return true;
}

bool OnVolumesSynced(AppState& app, WindowPort& window, const PostedMessage&) {
  if (!Engine().ready) RetrySyncLater(app, window);
  if (!window.IsSearchBoxEnabled()) window.EnableSearchBox();
  window.RebuildScopeBox();
  window.StartTimer(kTimerPrewarm, kAfterNewDiskPrewarmMs);
  if (window.SearchBoxText().empty()) {
    DoSearchAsync(u"", false, true);
  } else {
    RefreshSearchResultsAfterIndexUpdate();
  }
  SetStatusOf(window, u"Status_NewDiskDetected",
              u"A new disk was detected and the drive list was updated.");
  return true;
}

bool OnResort(AppState& app, WindowPort&, const PostedMessage& message) {
  if (message.first < 1 || message.first > 5) return false;
  {
    const std::scoped_lock lock(ResultsLock);
    SortAscending = message.second == 1;
  }
  if (app.features.resort) app.features.resort(static_cast<int>(message.first));
  return true;
}

struct MessageRow {
  uint32_t message;
  bool (*handle)(AppState&, WindowPort&, const PostedMessage&);
};
constexpr MessageRow kMessageRows[] = {
    {WM_INDEX_STATE, OnIndexState},
    {WM_SEARCH_RESULTS, OnSearchResults},
    {WM_SEARCH_STATUS, OnSearchStatus},
    {WM_FILTER_RESULTS, OnFilterResults},
    {WM_RECENT_LOADED, OnRecentLoaded},
    {WM_ATTRS_UPDATED, OnAttrsUpdated},
    {WM_NON_NTFS_REFRESHED, OnNonNtfsRefreshed},
    {WM_VOLUME_LOST, OnVolumeLost},
    {WM_VOLUMES_SYNCED, OnVolumesSynced},
    {WM_RESORT_RESULTS, OnResort},
};

void RequestSoon(AppState& app, WindowPort& window, bool isWaiting, uint32_t delayMs, uint64_t nowMs) {
  if (!isWaiting) app.repaintAskedMs = nowMs;
  // Each further request puts the answer off: a wheel that turns on and on would show nothing.
  if (isWaiting && nowMs - app.repaintAskedMs >= std::max(delayMs, kFrameMs)) {
    app.repaintAskedMs = nowMs;
    const bool isOfPart = app.repaintOnly.has_value();
    InvalidateRequested(app, window);
    app.repaintPending = true;
    if (isOfPart) app.repaintOnly = Rect();  // what is asked for from now on
  }
  window.StartTimer(kTimerRepaint, delayMs);
}

}  // namespace

bool TakeResultMessage(AppState& app, WindowPort& window, const PostedMessage& message) {
  for (const MessageRow& row : kMessageRows) {
    if (row.message == message.message) return row.handle(app, window, message);
  }
  return false;
}

void InvalidateRequested(AppState& app, WindowPort& window) {
  const auto only = std::exchange(app.repaintOnly, std::nullopt);
  if (!app.repaintPending.exchange(false)) return;
  if (only) return window.Invalidate(*only);
  window.InvalidateList();
}

void RequestListRepaint(AppState& app, WindowPort& window, uint32_t delayMs, uint64_t nowMs) {
  app.repaintOnly.reset();
  RequestSoon(app, window, app.repaintPending.exchange(true), delayMs, nowMs);
}

void RequestRepaintOf(AppState& app, WindowPort& window, const Rect& place, uint32_t delayMs,
                      uint64_t nowMs) {
  const bool isWaiting = app.repaintPending.exchange(true);
  if (!isWaiting) app.repaintOnly = place;
  if (isWaiting && app.repaintOnly) app.repaintOnly = Union(*app.repaintOnly, place);
  RequestSoon(app, window, isWaiting, delayMs, nowMs);
}

void SearchAgain(WindowPort& window) {
  const std::u16string text = window.SearchBoxText();
  const bool isEmpty = text.empty();
  DoSearchAsync(text, false, isEmpty);
}

bool IsFilterActive() {
  return ActiveCategory != 0 || CurrentWindowSettings.sizePreset != 0 ||
         CurrentWindowSettings.timePreset != 0;
}

}  // namespace quilmark
