#include "platform/locks.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "platform/lock_order.h"

namespace quilmark {

namespace {

constexpr size_t kMostHeld = 64;  // a search tries every volume: 26, and one more of each other rank

struct HeldLocks {
  std::array<const OrderedLock*, kMostHeld> locks;
  size_t count = 0;
};

thread_local HeldLocks heldLocks;

[[noreturn]] void EndWithReport(const char* what, const OrderedLock& lock) {
  std::fprintf(stderr, "lock order: %s '%s' (rank %d)\n", what, lock.Name(),
               static_cast<int>(lock.Rank()));
  std::fflush(stderr);
  std::abort();
}

}  // namespace

void RequireLockOrder(const OrderedLock& lock) {
  for (size_t i = 0; i < heldLocks.count; ++i) {
    const OrderedLock& held = *heldLocks.locks[i];
    if (held.Rank() < lock.Rank()) continue;
    std::fprintf(stderr, "lock order: waits for '%s' (rank %d) while it holds '%s' (rank %d)\n",
                 lock.Name(), static_cast<int>(lock.Rank()), held.Name(), static_cast<int>(held.Rank()));
    std::fflush(stderr);
    std::abort();
  }
}

void NoteLockTaken(const OrderedLock& lock) {
  if (heldLocks.count == kMostHeld) EndWithReport("too many locks are held besides", lock);
  heldLocks.locks[heldLocks.count++] = &lock;
}

void NoteLockReleased(const OrderedLock& lock) {
  for (size_t i = heldLocks.count; i-- > 0;) {
    if (heldLocks.locks[i] != &lock) continue;
    heldLocks.locks[i] = heldLocks.locks[--heldLocks.count];
    return;
  }
  EndWithReport("a thread releases what it does not hold:", lock);
}

bool ChecksLockOrder() { return kChecksLockOrder; }

}  // namespace quilmark
