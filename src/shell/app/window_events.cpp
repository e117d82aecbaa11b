#include "shell/app/window_events.h"

#include <utility>

#include "config/log.h"
#include "config/translate.h"
#include "config/window_settings.h"
#include "index/engine/search_engine.h"
#include "index/engine/volume_list.h"
#include "index/life/volume_life.h"
#include "platform/background.h"
#include "search/results/search_pipeline.h"
#include "shell/app/routing.h"
#include "shell/search/rename.h"
#include "shell/search/scope_items.h"
#include "shell/search/search_keys.h"
#include "shell/search/search_places.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint32_t kIdleTrimMs = 30'000, kFirstShowPrewarmMs = 1'200;
constexpr uint64_t kTaskbarRestMs = 1'000;

// After the close button the window opens anew as at the start, without query and selection.
Effects ResetView(AppState& app, const ViewContext& context) {
  SearchSession& session = TheSearch();
  if (session.scope.scopeIndex == kScopeDesktop) {
    session.scope = {};
    RebuildScopeBox(app.search, context);
  }
  context.window.SetText(kQueryBox, u"");
  session.CurrentQueryText.clear();
  ClearSelection(app.search.list.selection);
  app.search.rows.scrollY = 0;
  Effects effects = RelayoutList(app.search, context);
  session.SuppressRecentView = false;
  DoSearchAsync(u"", false, true);
  return OfView(app, AppMode::kSearch, std::move(effects));
}

void ShowReleased(const AppState& app, WindowPort& window) {
  RunBackground("device_change_refresh_ui",
                [target = app.mainWindow] { PostUnlessEnding(target, WM_VOLUME_LOST, 0, 0); });
  window.SetStatus(
      TranslateOr(u"Status_DriveEjectDetected", u"Drive eject detected. Handles released proactively."));
}

void ShowRemoved(AppState& app, const ViewContext& context) {
  RebuildScopeBox(app.search, context);
  SearchAgain(context);
  context.window.SetStatus(TranslateOr(
      u"Status_DriveRemoved", u"A disk was removed. The drive selection was updated automatically."));
}

}  // namespace

void TrimAndHide(WindowPort& window) {
  window.TrimSelf();
  window.Hide();
}

void CloseWindowRequest(AppState& app, const ViewContext& context) {
  WindowPort& window = context.window;
  // An editor that loses the focus while the window goes would ask about its text.
  window.CarryOut(CancelRename(app.search, context));
  if (app.exitRequested) return window.Destroy();
  if (app.trayIconAdded && Engine().ready) {
    if (std::exchange(app.closeBoxPressed, false)) window.CarryOut(ResetView(app, context));
    return TrimAndHide(window);
  }
  app.closeBoxPressed = false;
  if (app.hiddenStart && !window.SystemShutsDown()) return TrimAndHide(window);
  window.Destroy();
}

void ShowMainWindow(AppState& app, WindowPort& window) {
  app.shownByUser = true;
  window.StopTimer(kTimerHiddenStart);
  // The user waits for a volume now: the drives are looked for at once, and the end of that sync starts
  // the timer anew if it found none.
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
    if (CurrentWindowSettings.globalTrimOnToggle && !ShutdownRequested) window.TrimOthersInJob();
    return;
  }
  ShowAsAsked(app, window);
}

void ShowAsAsked(AppState& app, WindowPort& window) {
  window.AddOrUpdateTrayIcon();
  ShowMainWindow(app, window);
}

Effects OnActivation(AppState& app, const ViewContext& context, Activation activation) {
  // The keys of a capture are the window's own.
  if (activation == Activation::kDeactivated || app.capture.isActive) {
    context.window.StartTimer(kTimerIdleTrim, kIdleTrimMs);
    return {.isTaken = false};
  }
  context.window.StopTimer(kTimerIdleTrim);
  if (app.search.renaming) return {.focus = Focus::kEditor};  // after the message box about its text
  // The system's own handling would take the focus to the window itself, which is all that it does.
  const bool hasBox = app.appMode == AppMode::kSearch && app.search.isBoxEnabled;
  return OfView(app, AppMode::kSearch, {.isTaken = hasBox, .focus = Focus::kSearchBox});
}

Effects OnResized(AppState& app, const ViewContext& context, int width, int height) {
  Effects effects = CloseEditor(app, context);
  app.clientWidth = width;
  app.clientHeight = height;
  if (width == 0 || height == 0) return effects;
  effects.Join({.relayout = true, .dirty = {0, 0, width, height}});
  return effects;
}

void OnTaskbarCreated(AppState& app, WindowPort& window, uint64_t nowMs) {
  const uint64_t passedMs = app.taskbarSeenMs ? nowMs - *app.taskbarSeenMs : kTaskbarRestMs;
  if (passedMs < kTaskbarRestMs) {
    // Any program can send this, but it may be true.
    if (std::exchange(app.taskbarWaits, true)) return;
    return window.StartTimer(kTimerTaskbar, static_cast<uint32_t>(kTaskbarRestMs - passedMs));
  }
  app.taskbarSeenMs = nowMs;
  if (std::exchange(app.taskbarWaits, false)) window.StopTimer(kTimerTaskbar);
  const bool stood = window.AddOrUpdateTrayIcon() == TrayIconState::kStood;
  if (!stood) LogGdiState(u"TaskbarCreated received");
}

void OnDriveEvent(AppState& app, const ViewContext& context, uint32_t event,
                  std::optional<uint32_t> unitMask) {
  if (ShutdownRequested || !unitMask) return;
  switch (static_cast<DriveEvent>(event)) {
    case DriveEvent::kArrival:
      return SyncArrivedVolumesAsync(Engine(), app.mainWindow, *unitMask);
    case DriveEvent::kQueryRemove:
    case DriveEvent::kRemovePending:
      if (ReleaseVolumesByMask(Engine(), *unitMask)) ShowReleased(app, context.window);
      return;
    case DriveEvent::kRemoveComplete:
      if (ReleaseVolumesByMask(Engine(), *unitMask)) ShowRemoved(app, context);
      return;
  }
}

void OnVolumeNotice(AppState& app, const ViewContext& context, VolumeNotice notice, uintptr_t id) {
  if (ShutdownRequested) return;
  switch (notice) {
    case VolumeNotice::kWanted:
      if (ReleaseNoticedVolume(Engine(), id)) ShowReleased(app, context.window);
      return;
    case VolumeNotice::kFree:
      return ReopenNoticedVolume(Engine(), app.mainWindow, id);
    case VolumeNotice::kGone:
      if (ReleaseNoticedVolume(Engine(), id)) ShowRemoved(app, context);
      return;
  }
}

}  // namespace quilmark
