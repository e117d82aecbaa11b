#include "search/results/search_state.h"

#include <algorithm>
#include <mutex>
#include <thread>

#include "platform/clock.h"
#include "platform/known_folders.h"

namespace quilmark {

std::atomic<uint64_t> searchGeneration = 0;
OrderedLock ResultsLock{LockRank::kLeaf, "ResultsLock"};
std::shared_ptr<const ResultSet> CurrentResults = std::make_shared<ResultSet>();
int SortColumn = -1;
bool SortAscending = true;
SetOrder HeldOrder;
std::atomic<int> scopeIndex = kScopeAll;
std::atomic<char16_t> scopeDrive = 0;
std::atomic<bool> SuppressRecentView = false;
std::atomic<bool> initialSearchEnabled = true;
std::u16string CurrentQueryText;
SearchHooks searchHooks;

SearchScope CurrentScope() {
  const int index = scopeIndex;
  SearchScope scope;
  if (index == kScopeDesktop) {
    scope.desktopOnly = true;
    scope.desktop = DesktopFolder();
  } else if (index >= kScopeFirstVolume) {
    scope.position = static_cast<size_t>(index - kScopeFirstVolume);
    scope.drive = scopeDrive;
  }
  return scope;
}

std::vector<VolumeIndex*> VolumesInScope(const std::vector<VolumeIndex*>& all,
                                         const SearchScope& scope) {
  if (!scope.position) return all;
  if (scope.drive != 0) {
    const auto found = std::find_if(all.begin(), all.end(), [&](const VolumeIndex* volume) {
      return !volume->drive.empty() && volume->drive[0] == scope.drive;
    });
    return found != all.end() ? std::vector{*found} : std::vector<VolumeIndex*>();
  }
  if (*scope.position >= all.size()) return {};
  return {all[*scope.position]};
}

bool IsCurrent(uint64_t generation) { return searchGeneration == generation && !ShutdownRequested; }

bool PublishResults(uint64_t generation, ResultKind kind, std::shared_ptr<const ResultSet> results,
                    bool keepSort, SetOrder order) {
  {
    const std::scoped_lock lock(ResultsLock);
    if (!IsCurrent(generation)) return false;
    CurrentResults.swap(results);
    if (!keepSort) SortColumn = -1;
    HeldOrder = order;
  }
  // The former set dies here, outside the lock, or with its last reader.
  PostIfAlive(searchHooks.window, WM_SEARCH_RESULTS, generation, static_cast<int64_t>(kind));
  return true;
}

std::shared_ptr<const ResultSet> HeldResults() {
  const std::scoped_lock lock(ResultsLock);
  return CurrentResults;
}

static std::shared_lock<OrderedLock> LockInAMoment(const VolumeIndex& volume, OrderedLock& wanted) {
  constexpr uint64_t kMoment = 5, kRest = 50;  // milliseconds
  static thread_local uint64_t refusedMs = 0;
  std::shared_lock lock(wanted, std::defer_lock);
  if (!IsSearchable(volume) || lock.try_lock()) return lock;
  const uint64_t start = TickMs();
  if (start - refusedMs < kRest) return lock;  // the rows of a paint wait once, and not each
  while (IsSearchable(volume) && !lock.try_lock() && TickMs() - start <= kMoment) {
    std::this_thread::yield();
  }
  if (!lock) refusedMs = TickMs();
  return lock;
}

std::shared_lock<OrderedLock> LockForGlance(VolumeIndex& volume) {
  return LockInAMoment(volume, volume.indexLock);
}

std::shared_lock<OrderedLock> LockAttrsForGlance(const VolumeIndex& volume) {
  return LockInAMoment(volume, volume.attrLock);
}

}  // namespace quilmark
