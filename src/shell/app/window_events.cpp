#include "shell/app/window_events.h"

#include <utility>

#include "config/log.h"
#include "config/translate.h"
#include "index/search_engine.h"
#include "index/volume_life.h"
#include "index/volume_list.h"
#include "platform/background.h"
#include "search/query.h"
#include "search/search_pipeline.h"
#include "shell/search/highlight.h"
#include "shell/search/result_messages.h"
#include "shell/search/scope_items.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint32_t kIdleTrimMs = 30'000, kFirstShowPrewarmMs = 1'200;
constexpr uint64_t kTaskbarRestMs = 1'000;

// What the next opening finds after the close button: nothing of this one.
void ResetView(AppState& app, WindowPort& window) {
  if (scopeIndex == kScopeDesktop) {
    scopeIndex = kScopeAll;
    window.RebuildScopeBox();
  }
  window.ClearSearchBox();
  CurrentQueryText.clear();
  ClearSelection(app.list.selection);
  app.scrollY = 0;
  window.RelayoutList();
  SuppressRecentView = false;
  DoSearchAsync(u"", false, true);
}

void ShowReleased(const AppState& app, WindowPort& window) {
  RunBackground("device_change_refresh_ui",
                [target = app.mainWindow] { PostUnlessEnding(target, WM_VOLUME_LOST, 0, 0); });
  window.SetStatus(
      TranslateOr(u"Status_DriveEjectDetected", u"Drive eject detected. Handles released proactively."));
}

void ShowRemoved(WindowPort& window) {
  window.RebuildScopeBox();
  SearchAgain(window);
  window.SetStatus(TranslateOr(u"Status_DriveRemoved",
                               u"A disk was removed. The drive selection was updated automatically."));
}

}  // namespace

void TrimAndHide(WindowPort& window) {
  window.TrimSelf();
  window.Hide();
}

void CloseWindowRequest(AppState& app, WindowPort& window) {
  // An editor that loses the focus to the end would ask about its text.
  window.CancelRename();
  if (app.exitRequested) return window.Destroy();
  if (app.trayIconAdded && Engine().ready) {
    if (std::exchange(app.closeBoxPressed, false)) ResetView(app, window);
    return TrimAndHide(window);
  }
  app.closeBoxPressed = false;
  if (app.hiddenStart && !window.SystemShutsDown()) return TrimAndHide(window);
  window.Destroy();
}

void ShowMainWindow(AppState& app, WindowPort& window) {
  app.shownByUser = true;
  window.StopTimer(kTimerHiddenStart);
  // Whoever looks at the window waits for a volume: the drives are looked for now, and the end of that
  // sync arms the timer anew if it found none.
  if (std::exchange(app.syncRetryArmed, false) && !Engine().ready) {
    SyncCurrentVolumesAsync(Engine(), app.mainWindow);
  }
  window.ShowAndRaise();
  if (app.firstSearchDeferred.exchange(false)) {
    window.StartTimer(kTimerPrewarm, kFirstShowPrewarmMs);
    DoSearchAsync(u"", false, true);
  }
}

void ToggleWindow(AppState& app, WindowPort& window) {
  LogGdiState(u"WM_HOTKEY toggle");
  if (window.IsVisible()) {
    window.Hide();
    window.TrimSelfInJob();
    window.TrimOthersInJob();
    return;
  }
  ShowAsAsked(app, window);
}

void ShowAsAsked(AppState& app, WindowPort& window) {
  window.AddOrUpdateTrayIcon();
  ShowMainWindow(app, window);
}

void OnActivation(WindowPort& window, Activation activation) {
  if (activation == Activation::kDeactivated) return window.StartTimer(kTimerIdleTrim, kIdleTrimMs);
  window.FocusSearchBox();
  window.StopTimer(kTimerIdleTrim);
}

void OnTaskbarCreated(AppState& app, WindowPort& window, uint64_t nowMs) {
  const uint64_t passedMs = app.taskbarSeenMs ? nowMs - *app.taskbarSeenMs : kTaskbarRestMs;
  if (passedMs < kTaskbarRestMs) {
    // It may be the one that is true.
    if (std::exchange(app.taskbarWaits, true)) return;
    return window.StartTimer(kTimerTaskbar, static_cast<uint32_t>(kTaskbarRestMs - passedMs));
  }
  app.taskbarSeenMs = nowMs;
  if (std::exchange(app.taskbarWaits, false)) window.StopTimer(kTimerTaskbar);
  const bool stood = window.AddOrUpdateTrayIcon() == TrayIconState::kStood;
  if (!stood) LogGdiState(u"TaskbarCreated received");
}

void OnSearchTextChanged(WindowPort& window, std::u16string text) {
  window.StopTimer(TIMER_SEARCH_DEBOUNCE);
  const bool marksOthers = HighlightTerm(text) != HighlightTerm(CurrentQueryText);
  CurrentQueryText = std::move(text);
  if (marksOthers) window.InvalidateList();
  if (!IsContentPrefix(CurrentQueryText)) window.StartTimer(TIMER_SEARCH_DEBOUNCE, kSearchDebounceMs);
}

void OnScopeChosen(const AppState& app, WindowPort& window, int index) {
  window.StopTimer(TIMER_SEARCH_DEBOUNCE);
  if (index >= 0) ChooseScope(app, index);
  window.FocusSearchBox();
}

void OnDriveEvent(AppState& app, WindowPort& window, uint32_t event, std::optional<uint32_t> unitMask) {
  if (ShutdownRequested || !unitMask) return;
  switch (static_cast<DriveEvent>(event)) {
    case DriveEvent::kArrival:
      return SyncArrivedVolumesAsync(Engine(), app.mainWindow, *unitMask);
    case DriveEvent::kQueryRemove:
    case DriveEvent::kRemovePending:
      if (ReleaseVolumesByMask(Engine(), *unitMask)) ShowReleased(app, window);
      return;
    case DriveEvent::kRemoveComplete:
      if (ReleaseVolumesByMask(Engine(), *unitMask)) ShowRemoved(window);
      return;
  }
}

void OnVolumeNotice(AppState& app, WindowPort& window, VolumeNotice notice, uintptr_t id) {
  if (ShutdownRequested) return;
  switch (notice) {
    case VolumeNotice::kWanted:
      if (ReleaseNoticedVolume(Engine(), id)) ShowReleased(app, window);
      return;
    case VolumeNotice::kFree:
      return ReopenNoticedVolume(Engine(), app.mainWindow, id);
    case VolumeNotice::kGone:
      if (ReleaseNoticedVolume(Engine(), id)) ShowRemoved(window);
      return;
  }
}

}  // namespace quilmark
