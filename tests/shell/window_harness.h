// The state that the decisions of the window read and write, afresh for a test.
#pragma once

#include "config/scratch_config.h"
#include "config/window_settings.h"
#include "platform/background.h"
#include "search/filtered_results.h"
#include "shell/app/app_state.h"
#include "shell/recording_window.h"
#include "support/search_harness.h"

namespace quilmark {

struct WindowHarness {
  WindowHarness() {
    searchHooks.readSearchBox = [this] { return window.searchBox; };
    app.mainWindow = search.queue.Target();
    CurrentWindowSettings = {};
    FollowNewResults(KeepFiltered::kNo, 0);
    ActiveCategory = 0;
  }
  ~WindowHarness() {
    WaitForBackgroundJobs(60'000);
    CurrentWindowSettings = {};
    FollowNewResults(KeepFiltered::kNo, 0);
    ActiveCategory = 0;
  }
  WindowHarness(const WindowHarness&) = delete;
  WindowHarness& operator=(const WindowHarness&) = delete;

  // Holds `count` rows as the results of the generation of the moment.
  void HoldResults(size_t count) {
    const std::scoped_lock lock(ResultsLock);
    CurrentResults = std::make_shared<const ResultSet>(count);
  }

  ScratchConfig config;
  SearchHarness search;
  AppState app;
  RecordingWindow window{app};
};

}  // namespace quilmark
