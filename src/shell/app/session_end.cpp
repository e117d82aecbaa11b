#include "shell/app/session_end.h"

#include "config/attr_counters.h"
#include "config/log.h"
#include "platform/bounded_jobs.h"
#include "search/attributes/attr_cache_file.h"

namespace quilmark {

namespace {

// A save that the system cuts off loses the whole file; without it the file only lacks the last seconds.
bool IsWorthSaving(uint32_t mostMs) {
  const AttrCacheFile& file = TheAttrCacheFile();
  return AttrCacheGeneration > file.AttrSavedGeneration && file.AttrLastSaveMs <= mostMs;
}

}  // namespace

void SaveAtSessionEnd(const AppState& app, WindowPort& window, uint32_t mostMs) {
  SaveWindowSettings(window.Placement());
  if (IsWorthSaving(mostMs)) {
    RunWithin("session_end_save", {[&engine = app.search.engine] { engine.SaveAttributes(); }}, mostMs);
  }
  LogPerfMetric(SummaryMetricText(AttrCounters()));
}

}  // namespace quilmark
