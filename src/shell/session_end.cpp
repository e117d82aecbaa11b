#include "shell/session_end.h"

#include "config/attr_counters.h"
#include "config/log.h"
#include "platform/bounded_jobs.h"

namespace quilmark {

void SaveAtSessionEnd(const AppState& app, WindowEndPort& end, uint32_t mostMs) {
  SaveWindowSettings(end.Placement());
  if (app.features.saveAttributes) RunWithin("session_end_save", {app.features.saveAttributes}, mostMs);
  LogPerfMetric(SummaryMetricText(AttrCounters()));
}

}  // namespace quilmark
