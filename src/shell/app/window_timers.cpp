#include "shell/app/window_timers.h"

#include <utility>

#include "config/log.h"
#include "index/engine/search_engine.h"
#include "index/life/volume_life.h"
#include "shell/app/engine_messages.h"
#include "shell/app/hotkey_events.h"
#include "shell/app/window_events.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

void RetryTrayIcon(AppState& app, WindowPort& window) {
  LogGdiState(u"ID_TIMER_TRAY_RETRY fired");
  window.AddOrUpdateTrayIcon();
  if (app.trayIconAdded) window.StopTimer(ID_TIMER_TRAY_RETRY);
}

// Answers for a message of the taskbar that came too soon after another.
void SeeToTaskbar(AppState& app, const ViewContext& context) {
  app.taskbarSeenMs.reset();
  OnTaskbarCreated(app, context.window, context.nowMs);
}

// Keeps the window of a hidden start hidden, and has the drives looked for until there is a volume.
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

}  // namespace

Effects OnAppTimer(AppState& app, const ViewContext& context, uint32_t id) {
  WindowPort& window = context.window;
  switch (id) {
    case ID_TIMER_TRAY_RETRY:
      RetryTrayIcon(app, window);
      break;
    case kTimerHiddenStart:
      GuardHiddenStart(app, window);
      break;
    case kTimerCacheAutosave:
      if (!ShutdownRequested) app.search.engine.AutosaveAttributes();
      break;
    case kTimerIdleTrim:
    case kTimerWorkTrim:
      window.TrimSelf();
      break;
    case kTimerCaptureHint:
      OnCaptureHint(app, window);
      break;
    case kTimerTaskbar:
      SeeToTaskbar(app, context);
      break;
    default:
      return {.isTaken = false};
  }
  return {};
}

}  // namespace quilmark
