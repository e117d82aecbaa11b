#include "search/results/glance.h"

#include <mutex>
#include <thread>

#include "platform/clock.h"

namespace quilmark {

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
