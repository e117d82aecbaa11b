#include "platform/locks.h"

#include <windows.h>

#include "platform/lock_order.h"

namespace quilmark {

static_assert(sizeof(SRWLOCK) == sizeof(void*));

static SRWLOCK* AsSlim(void*& lock) { return reinterpret_cast<SRWLOCK*>(&lock); }

void OrderedLock::lock() {
  if (kChecksLockOrder) RequireLockOrder(*this);
  AcquireSRWLockExclusive(AsSlim(lock_));
  if (kChecksLockOrder) NoteLockTaken(*this);
}

bool OrderedLock::try_lock() {
  const bool taken = TryAcquireSRWLockExclusive(AsSlim(lock_)) != 0;
  if (kChecksLockOrder && taken) NoteLockTaken(*this);
  return taken;
}

void OrderedLock::unlock() {
  if (kChecksLockOrder) NoteLockReleased(*this);
  ReleaseSRWLockExclusive(AsSlim(lock_));
}

void OrderedLock::lock_shared() {
  if (kChecksLockOrder) RequireLockOrder(*this);
  AcquireSRWLockShared(AsSlim(lock_));
  if (kChecksLockOrder) NoteLockTaken(*this);
}

bool OrderedLock::try_lock_shared() {
  const bool taken = TryAcquireSRWLockShared(AsSlim(lock_)) != 0;
  if (kChecksLockOrder && taken) NoteLockTaken(*this);
  return taken;
}

void OrderedLock::unlock_shared() {
  if (kChecksLockOrder) NoteLockReleased(*this);
  ReleaseSRWLockShared(AsSlim(lock_));
}

}  // namespace quilmark
