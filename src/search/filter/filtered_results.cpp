#include "search/filter/filtered_results.h"

#include <mutex>
#include <utility>

namespace quilmark {

OrderedLock FilteredLock{LockRank::kLeaf, "FilteredLock"};
std::shared_ptr<const ResultSet> FilteredResults;
std::weak_ptr<const ResultSet> FilteredSource;
FilterKey FilteredKey;
std::atomic<uint64_t> FilterGeneration = 0;
std::atomic<uint64_t> DisplayCount = 0;
std::atomic<int> ActiveCategory = 0;

void FollowNewResults(KeepFiltered keep, uint64_t resultCount) {
  std::shared_ptr<const ResultSet> dropped;  // declared first: it dies outside the lock
  const std::scoped_lock lock(FilteredLock);
  if (keep == KeepFiltered::kIfThere && FilteredResults != nullptr) {
    DisplayCount = FilteredResults->size();
    return;
  }
  ++FilterGeneration;  // a job over the former results has nothing more to say
  dropped = std::exchange(FilteredResults, nullptr);
  FilteredSource.reset();
  FilteredKey = {};
  DisplayCount = resultCount;
}

std::shared_ptr<const ResultSet> ShownResults() {
  {
    const std::scoped_lock lock(FilteredLock);
    if (FilteredResults != nullptr) return FilteredResults;
  }
  return HeldResults();
}

}  // namespace quilmark
