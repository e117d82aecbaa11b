#include "shell/app/window_timers.h"

#include <utility>

#include "config/log.h"
#include "index/search_engine.h"
#include "index/volume_life.h"
#include "platform/clock.h"
#include "search/search_pipeline.h"
#include "shell/app/window_events.h"
#include "shell/search/result_messages.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint64_t kScrollRestMs = 350;
constexpr uint32_t kStillScrollingMs = 80, kPrewarmPollMs = 500;
constexpr int kMostPrewarmRounds = 60;

void RetryTrayIcon(AppState& app, WindowPort& window) {
  LogGdiState(u"ID_TIMER_TRAY_RETRY fired");
  window.AddOrUpdateTrayIcon();
  if (app.trayIconAdded) window.StopTimer(ID_TIMER_TRAY_RETRY);
}

// Of a message that came too soon after another.
void SeeToTaskbar(AppState& app, WindowPort& window) {
  app.taskbarSeenMs.reset();
  OnTaskbarCreated(app, window, TickMs());
}

void StartTypedSearch(AppState& app, WindowPort& window) {
  DoSearchAsync(CurrentQueryText, false, false);
  // It asks itself again until a volume is ready; somebody has to look for one.
  if (!CurrentQueryText.empty() && !Engine().ready) RetrySyncLater(app, window);
}

void SettleScroll(AppState& app, WindowPort& window) {
  if (IsScrolling(app, TickMs())) return window.StartTimer(kTimerScrollSettle, kStillScrollingMs);
  window.RelayoutList();  // the path column fits the rows that stand still now
  RunFeature(app.features.requestAttributes);
  RunFeature(app.features.requestThumbnails);
  RequestListRepaint(app, window, 80, TickMs());
}

// Keeps a program that was started for the tray in the tray, and tries for a volume until there is one.
void GuardHiddenStart(AppState& app, WindowPort& window) {
  app.syncRetryArmed = false;
  window.AddOrUpdateTrayIcon();
  const bool staysHidden = app.hiddenStart && !app.shownByUser;
  if (!Engine().ready) {
    SyncCurrentVolumesAsync(Engine(), app.mainWindow);
    if (!staysHidden || !window.IsVisible()) RetrySyncLater(app, window);
  }
  if (staysHidden && window.IsVisible()) window.Hide();
}

void PollPrewarm(AppState& app, WindowPort& window) {
  if (Engine().prewarming && ++app.prewarmRounds < kMostPrewarmRounds) return;
  window.StopTimer(kTimerPrewarmPoll);
  app.prewarmRunning = false;
  app.prewarmRounds = 0;
  // It may have filled rows that were painted without their values.
  if (app.paintedMissing) RequestListRepaint(app, window, 80, TickMs());
}

void RefreshFilterCounts(AppState& app, WindowPort&) {
  if (std::exchange(app.filterCountsPending, false)) RunFeature(app.features.refreshFilterCounts);
}

void AutosaveCache(AppState& app, WindowPort&) {
  if (!ShutdownRequested) RunFeature(app.features.autosaveAttributes);
}

void Trim(AppState&, WindowPort& window) { window.TrimSelf(); }

void RepaintList(AppState& app, WindowPort& window) { InvalidateRequested(app, window); }

enum class Firing { kOnce, kRepeating };

struct TimerRow {
  uint32_t id;
  Firing firing;
  void (*fire)(AppState&, WindowPort&);
};
constexpr TimerRow kTimerRows[] = {
    {ID_TIMER_TRAY_RETRY, Firing::kRepeating, RetryTrayIcon},
    {TIMER_SEARCH_DEBOUNCE, Firing::kOnce, StartTypedSearch},
    {kTimerScrollSettle, Firing::kOnce, SettleScroll},
    {kTimerHiddenStart, Firing::kOnce, GuardHiddenStart},
    {kTimerPrewarm, Firing::kOnce, StartPrewarm},
    {kTimerPrewarmPoll, Firing::kRepeating, PollPrewarm},
    {kTimerFilterCounts, Firing::kOnce, RefreshFilterCounts},
    {kTimerCacheAutosave, Firing::kRepeating, AutosaveCache},
    {kTimerIdleTrim, Firing::kOnce, Trim},
    {kTimerWorkTrim, Firing::kOnce, Trim},
    {kTimerRepaint, Firing::kOnce, RepaintList},
    {kTimerTaskbar, Firing::kOnce, SeeToTaskbar},
};

}  // namespace

void StartPrewarm(AppState& app, WindowPort& window) {
  if (!app.features.prewarmAttributes) return;
  app.prewarmRunning = true;
  app.prewarmRounds = 0;
  app.features.prewarmAttributes();
  window.StartTimer(kTimerPrewarmPoll, kPrewarmPollMs);
}

bool FireTimer(AppState& app, WindowPort& window, uint32_t id) {
  for (const TimerRow& row : kTimerRows) {
    if (row.id != id) continue;
    if (row.firing == Firing::kOnce) window.StopTimer(id);
    row.fire(app, window);
    return true;
  }
  return false;
}

void RetrySyncLater(AppState& app, WindowPort& window) {
  if (std::exchange(app.syncRetryArmed, true)) return;
  window.StartTimer(kTimerHiddenStart, kSyncRetryMs);
}

bool IsScrolling(const AppState& app, uint64_t nowMs) {
  return app.thumbDragging || nowMs - app.lastScrollTick < kScrollRestMs;
}

}  // namespace quilmark
