#include "shell/app/engine_messages.h"

#include <utility>

#include "config/product.h"
#include "config/translate.h"
#include "index/engine/search_engine.h"
#include "index/life/volume_life.h"
#include "platform/format.h"
#include "search/results/search_pipeline.h"
#include "shell/app/routing.h"
#include "shell/search/result_messages.h"
#include "shell/search/scope_items.h"
#include "shell/search/search_keys.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint32_t kAfterReadyPrewarmMs = 7'000, kAfterNewDiskPrewarmMs = 5'000;
constexpr uint32_t kAutosaveMs = 20'000, kHiddenTrimMs = 12'000;

void SetStatusOf(const ViewContext& context, std::u16string_view key, std::u16string_view english) {
  context.window.SetStatus(TranslateOr(key, english));
}

Effects StartRetry(AppState& app, const ViewContext& context) {
  SetStatusOf(context, u"Status_InitIncompleteRetry",
              u"Initialization incomplete. Retrying disk index loading in background...");
  SyncCurrentVolumesAsync(Engine(), app.mainWindow);
  app.syncRetryArmed = true;
  context.window.StartTimer(kTimerHiddenStart, kSyncRetryMs);
  return {};
}

// Lets the search box take a text from now on.
void EnableSearchBox(AppState& app, const ViewContext& context) {
  app.search.isBoxEnabled = true;
  context.window.EnableControl(kQueryBox);
}

Effects OnIndexState(AppState& app, const ViewContext& context, const PostedMessage& message) {
  if (message.first == 1) return StartRetry(app, context);
  WindowPort& window = context.window;
  RebuildScopeBox(app.search, context);
  window.SetTitle(TranslateOr(u"App_TitleMainLower", kMainTitle));
  EnableSearchBox(app, context);
  if (app.hiddenStart && !app.shownByUser && !window.IsVisible()) {
    app.firstSearchDeferred = true;
    SetStatusOf(
        context, u"Status_BackgroundStartupCompleted",
        u"Background startup completed. Results and cache warmup will run when window is opened.");
  } else {
    app.firstSearchDeferred = false;
    window.StartTimer(kTimerPrewarm, kAfterReadyPrewarmMs);
    DoSearchAsync(u"", false, true);
  }
  window.StartTimer(kTimerCacheAutosave, kAutosaveMs);
  if (app.hiddenStart) window.StartTimer(kTimerIdleTrim, kHiddenTrimMs);
  return OfView(app, AppMode::kSearch, {.isTaken = false, .focus = Focus::kSearchBox});
}

std::u16string RefreshedStatus(uint64_t refreshed, int64_t failed) {
  const std::u16string head =
      TranslateOr(u"Status_RefreshNonNtfsPrefix", u"Refreshed ") + FormatText(u"%llu", refreshed);
  if (failed <= 0) {
    return head + TranslateOr(u"Status_RefreshNonNtfsSingleSuffix",
                              u" non-NTFS volume indexes, see debug output");
  }
  return head + TranslateOr(u"Status_RefreshNonNtfsFailedMid", u" non-NTFS volumes, ") +
         FormatText(u"%llu", static_cast<uint64_t>(failed)) +
         TranslateOr(u"Status_RefreshNonNtfsFailedSuffix", u" failed, see debug output");
}

Effects OnNonNtfsRefreshed(AppState& app, const ViewContext& context, const PostedMessage& message) {
  RebuildScopeBox(app.search, context);
  StartPrewarm(app.search, context);
  if (message.first < 1) {
    SetStatusOf(context, u"Status_RefreshNonNtfsFailed",
                u"Failed to refresh non-NTFS volume indexes, see debug output");
    return {};
  }
  RefreshSearchResultsAfterIndexUpdate();
  context.window.SetStatus(RefreshedStatus(message.first, message.second));
  return {};
}

Effects OnVolumeLost(AppState& app, const ViewContext& context, const PostedMessage&) {
  if (!RemoveUnavailableVolumes(Engine())) return {};
  RebuildScopeBox(app.search, context);
  SearchAgain(context);
  SetStatusOf(context, u"Status_NtfsIndexRemoved",
              u"A disconnected disk was detected and its NTFS index was removed.");
  return {};
}

Effects OnVolumesSynced(AppState& app, const ViewContext& context, const PostedMessage&) {
  if (!Engine().ready) RetrySyncLater(app, context.window);
  if (!app.search.isBoxEnabled) EnableSearchBox(app, context);
  RebuildScopeBox(app.search, context);
  context.window.StartTimer(kTimerPrewarm, kAfterNewDiskPrewarmMs);
  if (context.window.TextOf(kQueryBox).empty()) {
    DoSearchAsync(u"", false, true);
  } else {
    RefreshSearchResultsAfterIndexUpdate();
  }
  SetStatusOf(context, u"Status_NewDiskDetected",
              u"A new disk was detected and the drive list was updated.");
  return {};
}

}  // namespace

Effects OnEngineMessage(AppState& app, const ViewContext& context, const PostedMessage& message) {
  switch (message.message) {
    case WM_INDEX_STATE:
      return OnIndexState(app, context, message);
    case WM_NON_NTFS_REFRESHED:
      return OnNonNtfsRefreshed(app, context, message);
    case WM_VOLUME_LOST:
      return OnVolumeLost(app, context, message);
    case WM_VOLUMES_SYNCED:
      return OnVolumesSynced(app, context, message);
    default:
      return {.isTaken = false};
  }
}

void RetrySyncLater(AppState& app, WindowPort& window) {
  if (std::exchange(app.syncRetryArmed, true)) return;
  window.StartTimer(kTimerHiddenStart, kSyncRetryMs);
}

}  // namespace quilmark
