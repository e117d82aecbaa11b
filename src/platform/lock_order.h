// The check of the lock order in debug builds: which locks the calling thread holds.
#pragma once

#include "platform/locks.h"

namespace quilmark {

#ifdef QUILMARK_DEBUG
inline constexpr bool kChecksLockOrder = true;
#else
inline constexpr bool kChecksLockOrder = false;
#endif

// Ends the program with both names on standard error if the thread holds a lock of the rank or above.
// Called before a wait.
void RequireLockOrder(const OrderedLock& lock);

// Called right after `lock` was taken, and right before it is given back.
void NoteLockTaken(const OrderedLock& lock);
void NoteLockReleased(const OrderedLock& lock);

}  // namespace quilmark
