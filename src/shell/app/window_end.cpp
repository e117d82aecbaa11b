#include "shell/app/window_end.h"

#include "config/attr_counters.h"
#include "config/log.h"
#include "index/engine/search_engine.h"
#include "index/life/volume_life.h"
#include "platform/clock.h"
#include "shell/app/window_timers.h"

namespace quilmark {

namespace {

constexpr uint32_t kJobsPauseMs = 500;

}  // namespace

bool IsEnding() { return ShutdownRequested; }

void EndWindow(AppState& app, WindowPort& window, WindowEndPort& end) {
  LogGdiState(u"WM_DESTROY begin");
  SaveWindowSettings(window.Placement());
  for (const uint32_t timer : kAllTimers) window.StopTimer(timer);
  end.CloseOtherWindows();
  end.RemoveTrayIcon();
  app.trayIconAdded = false;
  end.UnregisterHotkeys();
  ShutdownRequested = true;
  end.ReleaseBrushes();
  app.search.engine.SaveAttributes();
  LogPerfMetric(SummaryMetricText(AttrCounters()));
  if (app.search.icons != nullptr) app.search.icons->Clear();
  DropAllVolumes(Engine());
  end.ReleaseBackBuffer();
  end.ReleaseFonts();
  LogGdiState(u"WM_DESTROY end");
  app.mainWindow = nullptr;
  SleepMs(kJobsPauseMs);
  end.QuitMessageLoop();
}

}  // namespace quilmark
