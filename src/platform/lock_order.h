// The check of the lock order in debug builds: which locks the calling thread holds.
#pragma once

#include "platform/locks.h"

namespace quilmark {

// Whether OrderedLock calls the functions below: in debug builds.
#ifdef QUILMARK_DEBUG
inline constexpr bool kChecksLockOrder = true;
#else
inline constexpr bool kChecksLockOrder = false;
#endif

// Ends the program with both names on standard error if the thread holds a lock of the rank or above.
// Called before a wait.
void RequireLockOrder(const OrderedLock& lock);

// Counts a lock of the calling thread; called right after it was taken. Ends the program with a report
// if the thread holds 64 others.
void NoteLockTaken(const OrderedLock& lock);

// Called right before it is given back, by the thread that took it. Ends the program with a report if
// the thread does not hold it.
void NoteLockReleased(const OrderedLock& lock);

}  // namespace quilmark
