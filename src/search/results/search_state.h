// Process-wide state of the search, and the seams to what stands above it.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <vector>

#include "index/engine/search_engine.h"
#include "platform/locks.h"
#include "platform/window_post.h"
#include "search/query/query.h"

namespace quilmark {

// A set is built apart, published by a swap of the reference, and never changed afterwards.
using ResultSet = std::vector<MatchItem>;

// Raised by whatever makes running searches stale: they then end without a word.
extern std::atomic<uint64_t> searchGeneration;

extern OrderedLock ResultsLock;                          // leaf lock: a test and a swap
extern std::shared_ptr<const ResultSet> CurrentResults;  // ResultsLock; the held set
extern int SortColumn;                                   // ResultsLock; -1: none
extern bool SortAscending;                               // ResultsLock

// How the rows of a set stand.
struct SetOrder {
  int column = -1;  // the set is wholly sorted by it; -1: it is not
  bool ascending = true;

  bool operator==(const SetOrder&) const = default;
};
extern SetOrder HeldOrder;  // ResultsLock; of CurrentResults

extern std::atomic<int>
    scopeIndex;  // 0: all volumes; 1: the Desktop; n >= 2: the volume at position n - 2
// Letter of the volume that scopeIndex meant when it was chosen, since positions move when a drive joins
// or leaves. 0: not known, the position says it. Set before scopeIndex.
extern std::atomic<char16_t> scopeDrive;
extern std::atomic<bool> SuppressRecentView;  // an empty box goes on showing the whole index
extern std::atomic<bool> initialSearchEnabled;
extern std::u16string CurrentQueryText;  // interface thread only

inline constexpr int kScopeAll = 0, kScopeDesktop = 1, kScopeFirstVolume = 2;

// Messages to the main window; all carry the generation first.
inline constexpr uint32_t WM_SEARCH_RESULTS = 1026;  // second: a ResultKind
inline constexpr uint32_t WM_SEARCH_STATUS = 1027;   // second: a text (TakeText)
inline constexpr uint32_t WM_RESORT_RESULTS = 1064;  // first: column, second: 1 ascending

enum class ResultKind : int64_t { kFinal = 0, kSorted = 1, kPartial = 2 };

inline constexpr uint32_t TIMER_SEARCH_DEBOUNCE = 30003;
inline constexpr uint32_t kSearchDebounceMs = 260;
inline constexpr uint32_t kNotReadyRetryMs = 350;

// One search: what it was started with.
struct SearchJob {
  uint64_t generation = 0;
  std::u16string text;      // trimmed
  bool keepScroll = false;  // repeats the current query: sort column and scroll position stay
};

// Where a search looks, as scopeIndex stood when it began.
struct SearchScope {
  std::optional<size_t> position;  // of the one volume in the list; else all
  char16_t drive = 0;              // letter of that volume, which counts for more; 0: not known
  bool desktopOnly = false;
  std::optional<std::u16string> desktop;  // the Desktop folder; empty where the system names none
};

// Reads scopeIndex and scopeDrive, and asks for the Desktop folder if it is needed.
SearchScope CurrentScope();

// The volumes of `all` that the scope names.
std::vector<VolumeIndex*> VolumesInScope(const std::vector<VolumeIndex*>& all, const SearchScope& scope);

// False for a volume that is lost or being built: every search leaves it out without a word.
inline bool IsSearchable(const VolumeIndex& volume) { return volume.valid && !volume.busy; }

// The volume's lock for the interface thread, which waits a moment for a writer, but not for a volume
// that is being built: then it is not held.
std::shared_lock<OrderedLock> LockForGlance(VolumeIndex& volume);

// The same for the lock of its attributes.
std::shared_lock<OrderedLock> LockAttrsForGlance(const VolumeIndex& volume);

// Still the latest search, and no shutdown.
bool IsCurrent(uint64_t generation);

// What the layers above install; called on the thread of the caller. An empty one does nothing.
struct SearchHooks {
  PostTarget window = nullptr;  // where messages go
  std::function<std::u16string()> readSearchBox;
  std::function<void(std::u16string_view key, std::u16string_view english)> showStatus;  // status line
  std::function<void(uint32_t id, uint32_t delayMs)> restartTimer;  // kill, then set on the main window
  std::function<std::vector<std::u16string>()> contentExts;  // default extensions of a content query
  // Runs a content query on the job's thread and gives its hits; empty without: the query finds nothing.
  std::function<std::shared_ptr<ResultSet>(const SearchJob&, const ContentQuery&, const SearchScope&)>
      searchContent;
  std::function<std::shared_ptr<ResultSet>()> recentResults;  // the recently opened files
  // A program that asks once waits for a volume that the monitor is writing to, and loses no hit.
  bool waitsForWriters = false;
};
extern SearchHooks searchHooks;  // set before the first search

// Replaces CurrentResults under ResultsLock if `generation` is current, sets SortColumn to -1 unless
// `keepSort`, and posts WM_SEARCH_RESULTS. `order`: becomes HeldOrder. False if the set was dropped.
bool PublishResults(uint64_t generation, ResultKind kind, std::shared_ptr<const ResultSet> results,
                    bool keepSort, SetOrder order = {});

// A reference to the set of the moment; never null.
std::shared_ptr<const ResultSet> HeldResults();

}  // namespace quilmark
