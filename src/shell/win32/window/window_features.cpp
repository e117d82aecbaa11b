#include "index/data_changes.h"
#include "index/volume_life.h"
#include "search/attr_cache_file.h"
#include "search/attr_jobs.h"
#include "search/filters.h"
#include "search/sort.h"
#include "shell/search/filter_request.h"
#include "shell/search/sort_request.h"
#include "shell/view/window_ids.h"
#include "shell/win32/window/main_window.h"

namespace quilmark {

namespace {

void InstallStartupHooks() {
  startupHooks.loadAttributeCache = [] { LoadAttrCache(Engine()); };
  attributesBecameStale = TellSomeAreStale;
  startupHooks.writeMissingAttributeCache = [] { WriteMissingAttrCache(Engine()); };
}

}  // namespace

void InstallFeatures(AppState& app, MainWindow& window) {
  InstallStartupHooks();
  app.features.requestAttributes = [&app, &window] {
    const auto rows = ShownResults();
    const RowsInView inView = RowsToPaint(window.List(), app.scrollY, rows->size());
    HydrateRowsAsync(rows, {inView.first, inView.end});
  };
  app.features.showsStale = [&app, &window] {
    const auto rows = ShownResults();
    const RowsInView inView = RowsToPaint(window.List(), app.scrollY, rows->size());
    return ShowsStale(*rows, {inView.first, inView.end});
  };
  app.features.refreshFilter = [] { RefreshFilteredResultsAsync(CurrentFilterSettings()); };
  app.features.refreshFilterCounts = [&app, &window] {
    constexpr uint32_t kAskSoonMs = 60, kCountAgainMs = 250;
    const FilterCounts counts = UpdateFilterCounts(CurrentFilterSettings());
    if (window.filterBar.SetCaptions(TagCaptions(counts.byCategory))) window.PlaceTags();
    if (counts.isIncomplete) window.StartTimer(kTimerScrollSettle, kAskSoonMs);
    if (counts.leavesOutAVolume) {
      app.filterCountsPending = true;
      window.StartTimer(kTimerFilterCounts, kCountAgainMs);
    }
  };
  app.features.prewarmAttributes = [] { PrewarmAttrCacheAsync(Engine()); };
  app.features.autosaveAttributes = [] { AutosaveAttrCacheAsync(Engine()); };
  app.features.saveAttributes = [] { SaveAttrCacheAtEnd(Engine()); };
  app.features.sort = [&app, &window](int column) {
    RequestSort(app, window, column, Direction::kByClick);
  };
  app.features.resort = [&app, &window](int column) {
    RequestSort(app, window, column, Direction::kKeep);
  };
}

}  // namespace quilmark
