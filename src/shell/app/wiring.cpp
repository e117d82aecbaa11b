#include "shell/app/wiring.h"

#include <memory>
#include <optional>
#include <utility>

#include "config/translate.h"
#include "index/follow/data_changes.h"
#include "index/life/volume_life.h"
#include "search/attributes/attr_cache_file.h"
#include "search/results/search_session.h"
#include "shell/actions/late_shell.h"
#include "shell/actions/recent_opens.h"
#include "shell/app/content_start.h"
#include "shell/app/engine_messages.h"
#include "shell/search/thumbnails.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

// Hands what the views ask for to the layers below.
struct ProgramEngine final : EnginePort {
  void RequestAttributes(std::shared_ptr<const ResultSet> rows, RowRange range) override {
    HydrateRowsAsync(std::move(rows), range);
  }
  void RequestThumbnails(std::shared_ptr<const ResultSet> rows, RowRange range, int size) override {
    if (icons) LoadThumbnailsAsync(*icons, std::move(rows), range, size);
  }
  bool IsLoadingThumbnails() override { return TheSearch().thumbHydration.IsRunning(); }
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
  std::optional<IconCache> icons;  // from the making of the window on
};

// All that the window's side of the program keeps from its start to its end. Interface thread, but for
// the icons.
struct Program {
  ProgramEngine engine;
  LateShell shell;
  AppState app{engine, shell};
};

// Never destroyed: a job may load thumbnails until the end.
Program& TheProgram() {
  static Program& program = *new Program;
  return program;
}

void WireIcons(AppState& app, ProgramEngine& engine, IconSource& source) {
  app.search.icons = &engine.icons.emplace(source);
  app.search.icons->Prepare();
}

// Has the engine's start load the attribute cache, and its changes told to the list.
void WireAttributes() {
  Engine().startupHooks.loadAttributeCache = [] { LoadAttrCache(Engine()); };
  Engine().startupHooks.writeMissingAttributeCache = [] { WriteMissingAttrCache(Engine()); };
  Engine().attributesBecameStale = TellSomeAreStale;
}

// Gives the search its ways to the window.
void WireSearch(AppState& app, WindowPort& window) {
  SearchHooks& hooks = TheSearch().hooks;
  hooks.window = app.mainWindow;
  hooks.readSearchBox = [&window] { return window.TextOf(kQueryBox); };
  hooks.showStatus = [&window](std::u16string_view key, std::u16string_view english) {
    window.SetStatus(TranslateOr(key, english));
  };
  hooks.restartTimer = [&window](uint32_t id, uint32_t delayMs) {
    window.StopTimer(id);
    window.StartTimer(id, delayMs);
  };
  WireContentSearch(hooks);
  hooks.recentResults = [] { return std::make_shared<ResultSet>(CollectRecentItems()); };
}

}  // namespace

AppState& App() { return TheProgram().app; }

void StartEngine(AppState& app) {
  InitBackground(Engine(), app.mainWindow);
  (void)StartDriveWatcher(app.mainWindow);  // without it the notices of the system are left
}

void WireProgram(AppState& app, WindowPort& window, const SystemParts& system) {
  TheProgram().engine.window = &window;
  TheProgram().shell.real = &system.shell;
  WireIcons(app, TheProgram().engine, system.icons);
  WireAttributes();
  WireSearch(app, window);
}

}  // namespace quilmark
