// The process-wide state of the search, set up afresh for a test and put back afterwards.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "index/engine/search_engine.h"
#include "search/results/search_pipeline.h"
#include "search/results/search_state.h"

namespace quilmark {

class SearchHarness {
 public:
  SearchHarness();
  ~SearchHarness();
  SearchHarness(const SearchHarness&) = delete;
  SearchHarness& operator=(const SearchHarness&) = delete;

  // The next message; fails the test where none comes in good time.
  PostedMessage Next();

  // The kinds of WM_SEARCH_RESULTS that are posted for the generation of the moment, up to the final
  // one.
  std::vector<ResultKind> KindsUntilFinal();

  // True if no job runs and nothing is posted.
  bool IsQuiet();

  // Paths of the set that the list shows.
  std::vector<std::u16string> ShownPaths() const;

  std::u16string searchBox;                // what the hook reads
  std::vector<std::u16string> statusKeys;  // shown in the status line
  std::vector<uint32_t> timerDelays;       // of TIMER_SEARCH_DEBOUNCE
  PostQueue queue;
};

}  // namespace quilmark
