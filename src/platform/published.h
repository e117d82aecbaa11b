// A value that jobs replace as a whole, and everybody else reads.
#pragma once

#include <concepts>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>

#include "platform/generation.h"
#include "platform/locks.h"

namespace quilmark {

// Holds what belongs together, such as rows and the order they stand in, in one value that is cheap to
// copy: what is large is held by a shared reference in it. Its lock is a leaf: what is done under it is
// a copy and a swap. A former value dies outside the lock, or with its last reader.
//
// Work that makes a new value begins with Supersede and ends with Publish: once another Supersede has
// returned, what the former work found is dropped. Any thread.
template <typename Value>
class Published {
 public:
  // `lockName` must outlive this; a broken order of locks is reported under it.
  explicit Published(const char* lockName, Value first = {})
      : lock_(LockRank::kLeaf, lockName), value_(std::move(first)) {}

  // A copy of the value as it is now.
  Value Get() const {
    const std::scoped_lock lock(lock_);
    return value_;
  }

  // What look(value) returns; called under the lock, so it takes no other and allocates nothing.
  template <std::invocable<const Value&> Look>
  auto Read(Look look) const {
    const std::scoped_lock lock(lock_);
    return look(value_);
  }

  // Makes all earlier work stale. Returns the ticket of the work that begins now.
  Ticket Supersede() {
    const std::scoped_lock lock(lock_);
    return generation_.Supersede();
  }

  // The same, and edit(value) in the same hold of the lock: nothing is published between the two.
  template <std::invocable<Value&> Edit>
  Ticket Supersede(Edit edit) {
    std::optional<Value> next;
    const std::scoped_lock lock(lock_);
    EditLocked(next, edit);
    return generation_.Supersede();
  }

  // edit(value); where it returns true all earlier work becomes stale in the same hold of the lock.
  template <std::predicate<Value&> Edit>
  void SupersedeIf(Edit edit) {
    std::optional<Value> next;
    const std::scoped_lock lock(lock_);
    if (EditLocked(next, edit)) generation_.Supersede();
  }

  // edit(value), whatever work is under way.
  template <std::invocable<Value&> Edit>
  void Change(Edit edit) {
    std::optional<Value> next;
    const std::scoped_lock lock(lock_);
    EditLocked(next, edit);
  }

  // edit(value) if the ticket is of this and current; else false, and nothing was done.
  template <std::invocable<Value&> Edit>
  [[nodiscard]] bool Publish(const Ticket& ticket, Edit edit) {
    std::optional<Value> next;
    const std::scoped_lock lock(lock_);
    if (!generation_.IsCurrent(ticket)) return false;
    EditLocked(next, edit);
    return true;
  }

  // Replaces the value if the ticket is of this and current; else false, and `value` was dropped.
  [[nodiscard]] bool Publish(const Ticket& ticket, Value value) {
    const std::scoped_lock lock(lock_);
    if (!generation_.IsCurrent(ticket)) return false;
    std::swap(value_, value);
    return true;
  }

  // The ticket of the latest Supersede, and its number; 0 before the first.
  Ticket Latest() const { return generation_.Latest(); }
  uint64_t Number() const { return generation_.Number(); }

 private:
  // `next` was declared before the lock was taken: the former value dies with it, outside the lock.
  // Returns what the edit returns. An edit that throws leaves the value as it was.
  template <typename Edit>
  auto EditLocked(std::optional<Value>& next, Edit& edit) {
    next.emplace(value_);
    if constexpr (std::is_void_v<std::invoke_result_t<Edit&, Value&>>) {
      edit(*next);
      std::swap(value_, *next);
    } else {
      const auto outcome = edit(*next);
      std::swap(value_, *next);
      return outcome;
    }
  }

  mutable OrderedLock lock_;
  Generation generation_;
  Value value_;  // lock_
};

}  // namespace quilmark
