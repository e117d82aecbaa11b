#include "platform/locks.h"

#include "platform/lock_order.h"

namespace quilmark {

void OrderedLock::lock() {
  if (kChecksLockOrder) RequireLockOrder(*this);
  lock_.lock();
  if (kChecksLockOrder) NoteLockTaken(*this);
}

bool OrderedLock::try_lock() {
  const bool taken = lock_.try_lock();
  if (kChecksLockOrder && taken) NoteLockTaken(*this);
  return taken;
}

void OrderedLock::unlock() {
  if (kChecksLockOrder) NoteLockReleased(*this);
  lock_.unlock();
}

void OrderedLock::lock_shared() {
  if (kChecksLockOrder) RequireLockOrder(*this);
  lock_.lock_shared();
  if (kChecksLockOrder) NoteLockTaken(*this);
}

bool OrderedLock::try_lock_shared() {
  const bool taken = lock_.try_lock_shared();
  if (kChecksLockOrder && taken) NoteLockTaken(*this);
  return taken;
}

void OrderedLock::unlock_shared() {
  if (kChecksLockOrder) NoteLockReleased(*this);
  lock_.unlock_shared();
}

}  // namespace quilmark
