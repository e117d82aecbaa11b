// The state that the decisions of the window read and write, afresh for a test.
#pragma once

#include "canvas/table_measure.h"
#include "config/scratch_config.h"
#include "config/window_settings.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "search/results/search_session.h"
#include "shell/actions/recent_opens.h"
#include "shell/app/app_state.h"
#include "shell/recording_shell.h"
#include "shell/recording_system.h"
#include "shell/recording_window.h"
#include "shell/view/window_ids.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {

struct WindowHarness {
  WindowHarness() {
    TheSearch().hooks.readSearchBox = [this] { return window.TextOf(kQueryBox); };
    app.clientWidth = 1'100;
    app.clientHeight = 700;
    app.mainWindow = search.queue.Target();
    app.system = &system;
    CurrentWindowSettings = {};
    FollowNewResults(KeepFiltered::kNo, 0);
    TheSearch().ActiveCategory = 0;
  }
  ~WindowHarness() {
    engine.prewarming.reset();
    WaitForBackgroundJobs(60'000);
    ClearRecentOpens();
    CurrentWindowSettings = {};
    FollowNewResults(KeepFiltered::kNo, 0);
    TheSearch().ActiveCategory = 0;
  }
  WindowHarness(const WindowHarness&) = delete;
  WindowHarness& operator=(const WindowHarness&) = delete;

  // Holds `count` rows as the results of the generation of the moment; all of one file.
  void HoldResults(size_t count) { HoldRows(std::make_shared<const ResultSet>(Rows(count))); }
  ResultSet Rows(size_t count) { return ResultSet(count, {volume_.get(), file_}); }

  // At the present moment, or at another one.
  ViewContext Context(uint64_t nowMs = TickMs()) {
    return {.dpi = app.systemDpi,
            .client = {0, 0, app.clientWidth, app.clientHeight},
            .palette = CurrentPalette,
            .fonts = fonts,
            .window = window,
            .status = window.status,
            .hasFocus = true,
            .nowMs = nowMs};
  }
  // As the window does when a handler has answered. True if the event was taken.
  bool Carry(const Effects& effects) {
    window.CarryOut(effects);
    return effects.isTaken;
  }

  ScratchConfig config;
  SearchHarness search;
  TableMeasure fonts{96};
  RecordingEngine engine;
  RecordingShell shell;
  RecordingSystem system;
  AppState app{engine, shell};
  RecordingWindow window{app};

 private:
  std::unique_ptr<VolumeIndex> volume_ = MakeTestVolume(u"Q:");  // not one of the engine
  uint32_t file_ = AddFile(*volume_, u"row");
};

}  // namespace quilmark
