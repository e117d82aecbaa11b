// What the list shows of the results while a filter is on.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "platform/locks.h"
#include "search/results/search_state.h"

namespace quilmark {

// What a filtered set was computed from; -1: from nothing.
struct FilterKey {
  int category = -1, sizePreset = -1, timePreset = -1, sizeUnit = -1, dateFrom = -1, dateTo = -1;
  bool isRangeValid = false;
  uint32_t sizeHash = 0;

  bool operator==(const FilterKey&) const = default;
};

extern OrderedLock FilteredLock;                          // leaf lock: a test and a swap
extern std::shared_ptr<const ResultSet> FilteredResults;  // FilteredLock; null: none
extern std::weak_ptr<const ResultSet> FilteredSource;     // FilteredLock; what it was made of
extern FilterKey FilteredKey;                             // FilteredLock
extern std::atomic<uint64_t> FilterGeneration;            // of the filter job that may publish
extern std::atomic<uint64_t> DisplayCount;                // rows that the list shows
extern std::atomic<int> ActiveCategory;                   // 0: all

// Which set the list follows once new results are there. Sets DisplayCount.
enum class KeepFiltered { kNo, kIfThere };
void FollowNewResults(KeepFiltered keep, uint64_t resultCount);

// The rows in force: the filtered set if there is one, else all results; never null.
std::shared_ptr<const ResultSet> ShownResults();

}  // namespace quilmark
