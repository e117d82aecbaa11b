// The process-wide state of the search, set up afresh for a test and put back afterwards.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "index/engine/search_engine.h"
#include "search/results/search_pipeline.h"
#include "search/results/search_session.h"

namespace quilmark {

// What the list holds and shows, put there without a search, and looked at.
void HoldRows(std::shared_ptr<const ResultSet> rows);
void SetSort(int column, bool ascending);
void SetDisplayCount(uint64_t count);
uint64_t SearchNumber();  // searchGeneration
Ticket LatestSearch();    // of the same
Ticket StaleTicket();
int SortColumn();
bool SortAscending();
std::shared_ptr<const ResultSet> FilteredSet();  // null: none

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
