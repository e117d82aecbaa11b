// The one lock of the program: shared and exclusive, with attempts that do not block.
//
// Every lock has a rank. A thread may wait only for a lock whose rank is above every rank that it holds,
// which makes a deadlock impossible; debug builds check it at each wait and end the program with both
// names. An attempt that does not block is free of the rule. Works with std::unique_lock,
// std::shared_lock, std::scoped_lock.
#pragma once

#ifndef _WIN32
#include <shared_mutex>
#endif

namespace quilmark {

// What a lock guards, from the first that a thread may wait for to the last.
enum class LockRank {
  kVolumeList = 1,  // SearchEngine::volumesMutex
  kIndex = 2,       // VolumeIndex::indexLock
  kAttributes = 3,  // attrLock, mftSizesLock, folderSizesLock: one at a time
  kLeaf = 4,        // a swap, nothing else
};

// A lock as std::shared_mutex is one; not recursive. Any thread; who takes it gives it back.
class OrderedLock {
 public:
  // `name` must outlive the lock; it appears in the report of a broken order.
  OrderedLock(LockRank rank, const char* name) : rank_(rank), name_(name) {}
  OrderedLock(const OrderedLock&) = delete;
  OrderedLock& operator=(const OrderedLock&) = delete;

  // Exclusive: waits, tries (false if another thread has it in either way), gives back.
  void lock();
  [[nodiscard]] bool try_lock();
  void unlock();

  // Shared: waits, tries, gives back. A try is false if another thread has it exclusively, and may be
  // false if one waits to.
  void lock_shared();
  [[nodiscard]] bool try_lock_shared();
  void unlock_shared();

  // What it was made with.
  LockRank Rank() const { return rank_; }
  const char* Name() const { return name_; }

 private:
#ifdef _WIN32
  void* lock_ = nullptr;  // SRWLOCK, whose initial value is null
#else
  std::shared_mutex lock_;
#endif
  LockRank rank_;
  const char* name_;
};

// True in builds that check the order.
bool ChecksLockOrder();

}  // namespace quilmark
