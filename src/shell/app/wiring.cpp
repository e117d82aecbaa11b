#include "shell/app/wiring.h"

#include <utility>

#include "config/translate.h"
#include "index/follow/data_changes.h"
#include "index/life/volume_life.h"
#include "search/attributes/attr_cache_file.h"
#include "search/results/search_state.h"
#include "shell/app/engine_messages.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

// The views ask, the layers below answer.
struct ProgramEngine final : EnginePort {
  void RequestAttributes(std::shared_ptr<const ResultSet> rows, RowRange range) override {
    HydrateRowsAsync(std::move(rows), range);
  }
  bool ShowsStale(const ResultSet& rows, RowRange range) override {
    return quilmark::ShowsStale(rows, range);
  }
  void RefreshFilter(FilterSettings settings) override {
    RefreshFilteredResultsAsync(std::move(settings));
  }
  FilterCounts CountByCategory(const FilterSettings& settings) override {
    return UpdateFilterCounts(settings);
  }
  void Sort(int column, Direction direction) override { DoSortAsync(column, direction); }
  void PrewarmAttributes() override { PrewarmAttrCacheAsync(Engine()); }
  void AutosaveAttributes() override { AutosaveAttrCacheAsync(Engine()); }
  void SaveAttributes() override { SaveAttrCacheAtEnd(Engine()); }
  void LookForVolumesLater() override {
    if (window != nullptr) RetrySyncLater(App(), *window);
  }

  WindowPort* window = nullptr;
};

ProgramEngine& TheEngine() {
  static ProgramEngine engine;
  return engine;
}

// The engine's start brings the attributes back; its changes make them stale.
void WireAttributes() {
  Engine().startupHooks.loadAttributeCache = [] { LoadAttrCache(Engine()); };
  Engine().startupHooks.writeMissingAttributeCache = [] { WriteMissingAttrCache(Engine()); };
  Engine().attributesBecameStale = TellSomeAreStale;
}

// The search reaches the window by these.
void WireSearch(AppState& app, WindowPort& window) {
  searchHooks.window = app.mainWindow;
  searchHooks.readSearchBox = [&window] { return window.TextOf(kQueryBox); };
  searchHooks.showStatus = [&window](std::u16string_view key, std::u16string_view english) {
    window.SetStatus(TranslateOr(key, english));
  };
  searchHooks.restartTimer = [&window](uint32_t id, uint32_t delayMs) {
    window.StopTimer(id);
    window.StartTimer(id, delayMs);
  };
}

}  // namespace

AppState& App() {
  static AppState state(TheEngine());
  return state;
}

void StartEngine(AppState& app) {
  InitBackground(Engine(), app.mainWindow);
  (void)StartDriveWatcher(app.mainWindow);  // without it the notices of the system are left
}

void WireProgram(AppState& app, WindowPort& window) {
  TheEngine().window = &window;
  WireAttributes();
  WireSearch(app, window);
}

}  // namespace quilmark
