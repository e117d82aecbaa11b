// The search of the process: what is asked, what was found, and what of it is shown.
//
// A search, a sort and a filter each build their rows apart, on a job that carries all it needs by
// value, and publish them here if they are still the latest of their kind.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "index/engine/search_engine.h"
#include "platform/background.h"
#include "platform/published.h"
#include "platform/window_post.h"
#include "search/query/query.h"
#include "search/results/search_scope.h"

namespace quilmark {

// Built apart, and never changed once it is published.
using ResultSet = std::vector<MatchItem>;

// How rows stand.
struct SetOrder {
  int column = -1;  // they are wholly sorted by it; -1: they are not
  bool ascending = true;

  bool operator==(const SetOrder&) const = default;
};

// By what the user has the list sorted. Rows that are published with KeepSort::kNo set it back to none.
struct ChosenSort {
  int column = -1;  // -1: none
  bool ascending = true;
};

// What was found, and how it is to stand.
struct SearchResults {
  std::shared_ptr<const ResultSet> rows = std::make_shared<const ResultSet>();  // never null
  SetOrder order;                                                               // of `rows`
  int SortColumn = -1;  // that the user chose last, whether or not it is done; -1: none
  bool SortAscending = true;
};

// What a filtered set was computed from; -1: from nothing.
struct FilterKey {
  int category = -1, sizePreset = -1, timePreset = -1, sizeUnit = -1, dateFrom = -1, dateTo = -1;
  bool isRangeValid = false;
  uint32_t sizeHash = 0;

  bool operator==(const FilterKey&) const = default;
};

// What the list shows of the results.
struct FilteredRows {
  std::shared_ptr<const ResultSet> rows;  // null: no filter acts, the list shows the results
  std::weak_ptr<const ResultSet> source;  // the results that `rows` were made of
  FilterKey FilteredKey;
  uint64_t DisplayCount = 0;  // rows that the list shows
};

// What the layers above install before the first search, and nobody changes afterwards. Called on the
// thread that runs the search or, where it says so, on the interface thread. An empty one does nothing.
struct SearchHooks {
  PostTarget window = nullptr;                    // where messages go
  std::function<std::u16string()> readSearchBox;  // interface thread
  // Interface thread: a text for the status line, by its key in the language table or in English.
  std::function<void(std::u16string_view key, std::u16string_view english)> showStatus;
  // Interface thread: stops the timer `id` of the main window and starts it anew.
  std::function<void(uint32_t id, uint32_t delayMs)> restartTimer;
  // Interface thread: a search for the text begins; what its job may not read is to be kept for it.
  std::function<void(std::u16string_view text)> whenSearchBegins;
  std::function<std::vector<std::u16string>()> contentExts;  // default extensions of a content query
  // Runs a content query and gives its hits; without it such a query finds nothing.
  std::function<std::shared_ptr<ResultSet>(const struct SearchJob&, const ContentQuery&,
                                           const SearchScope&)>
      searchContent;
  std::function<std::shared_ptr<ResultSet>()> recentResults;  // the recently opened files
};

// How names are compared, and what a search does about a volume that is being written to.
struct SearchOptions {
  bool initials = true;  // `initialSearchEnabled`: a query finds names by the initials of ideographs
  // A program that asks once waits for a volume that the monitor is writing to, and loses no hit.
  bool waitsForWriters = false;
};

struct SearchSession {
  // The generation of the results (searchGeneration) belongs to searches and sorts, that of what is
  // shown of them (FilterGeneration) to filters.
  Published<SearchResults> CurrentResults{"ResultsLock"};
  Published<FilteredRows> FilteredResults{"FilteredLock"};
  // Of the attributes of rows in view, and the one job that reads them.
  Generation hydrationGeneration;
  SingleJob hydration;
  // Of the thumbnails of rows in view, and the one job that loads them.
  Generation thumbGeneration;
  SingleJob thumbHydration;

  std::atomic<int> ActiveCategory = 0;           // of the filter bar; 0: all
  std::atomic<bool> SuppressRecentView = false;  // an empty box goes on showing the whole index

  // Interface thread alone; a job has a copy.
  ScopeChoice scope;
  SearchOptions options;
  std::u16string CurrentQueryText;  // what was typed last

  SearchHooks hooks;
};

// Lives as long as the process.
SearchSession& TheSearch();

// Messages to the main window. The first two carry the number of the generation of CurrentResults first.
inline constexpr uint32_t WM_SEARCH_RESULTS = 1026;  // second: a ResultKind
inline constexpr uint32_t WM_SEARCH_STATUS = 1027;   // second: a text (TakeText)
inline constexpr uint32_t WM_RESORT_RESULTS = 1064;  // first: column, second: 1 ascending

enum class ResultKind : int64_t { kFinal = 0, kSorted = 1, kPartial = 2 };

inline constexpr uint32_t TIMER_SEARCH_DEBOUNCE = 30003;
inline constexpr uint32_t kSearchDebounceMs = 260;
inline constexpr uint32_t kNotReadyRetryMs = 350;

// One search: all that it was started with.
struct SearchJob {
  Ticket ticket;
  std::u16string text;  // trimmed
  ScopeChoice scope;
  SearchOptions options;
  bool keepScroll = false;  // repeats the current query: sort column and scroll position stay
};

// Raises searchGeneration, which is that of CurrentResults: whatever searches or sorts drops what it
// finds. Any thread.
Ticket SupersedeSearch();

enum class KeepSort : uint8_t { kNo, kYes };

// Publishes rows that stand in `order`, if the ticket is current, and posts WM_SEARCH_RESULTS.
// SortColumn becomes -1 unless it is kept. False if the rows were dropped. Any thread.
bool PublishResults(const Ticket& ticket, ResultKind kind, std::shared_ptr<const ResultSet> rows,
                    KeepSort keepSort, SetOrder order = {});

// Tells the window of what was published under the ticket.
void PostResults(const Ticket& ticket, ResultKind kind);

// The choice of the moment, whether or not the rows stand that way yet. Any thread.
ChosenSort CurrentSort();

// The rows found last; never null. Any thread.
std::shared_ptr<const ResultSet> HeldResults();

// The rows of the list: the filtered ones if there are any, else all results; never null. Any thread.
std::shared_ptr<const ResultSet> ShownResults();

// How many rows the list shows, as it was told last: the results may have been replaced since. Any
// thread.
uint64_t DisplayCount();

// Which set the list follows once new results are there.
enum class KeepFiltered : uint8_t { kNo, kIfThere };

// Drops the filtered rows, so that the list shows all results: sets DisplayCount to `resultCount`, their
// number, and makes filter jobs stale. With kIfThere, and where there are filtered rows, keeps these and
// sets DisplayCount to their number instead. Any thread.
void FollowNewResults(KeepFiltered keep, uint64_t resultCount);

}  // namespace quilmark
