#include "platform/locks.h"

#include <gtest/gtest.h>

#include <future>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <type_traits>

namespace quilmark {
namespace {

// The answer of `attempt` on a thread of its own, which holds nothing.
template <typename Attempt>
auto OnAnotherThread(Attempt attempt) {
  return std::async(std::launch::async, attempt).get();
}

bool CanLock(OrderedLock& lock) {
  return OnAnotherThread([&] {
    const std::unique_lock attempt(lock, std::try_to_lock);
    return attempt.owns_lock();
  });
}

bool CanShare(OrderedLock& lock) {
  return OnAnotherThread([&] {
    const std::shared_lock attempt(lock, std::try_to_lock);
    return attempt.owns_lock();
  });
}

TEST(OrderedLock, AnExclusiveHolderKeepsAllOthersOut) {
  OrderedLock lock(LockRank::kIndex, "index");
  std::unique_lock held(lock);
  EXPECT_FALSE(CanLock(lock));
  EXPECT_FALSE(CanShare(lock));
  held.unlock();
  EXPECT_TRUE(CanLock(lock));
  EXPECT_TRUE(CanShare(lock));
}

TEST(OrderedLock, SharedHoldersKeepOnlyTheExclusiveOneOut) {
  OrderedLock lock(LockRank::kIndex, "index");
  std::shared_lock held(lock);
  EXPECT_TRUE(CanShare(lock));
  EXPECT_FALSE(CanLock(lock));
  held.unlock();
  EXPECT_TRUE(CanLock(lock));
}

TEST(OrderedLock, ATakenAttemptHoldsTheLock) {
  OrderedLock lock(LockRank::kLeaf, "leaf");
  const std::unique_lock held(lock, std::try_to_lock);
  ASSERT_TRUE(held.owns_lock());
  EXPECT_FALSE(CanShare(lock));
}

TEST(OrderedLock, KnowsItsRankAndName) {
  const OrderedLock lock(LockRank::kAttributes, "attrLock");
  EXPECT_EQ(lock.Rank(), LockRank::kAttributes);
  EXPECT_EQ(lock.Name(), std::string("attrLock"));
  EXPECT_FALSE(std::is_copy_constructible_v<OrderedLock>);
}

TEST(OrderedLock, RisingRanksMayBeWaitedFor) {
  OrderedLock list(LockRank::kVolumeList, "list"), index(LockRank::kIndex, "index");
  OrderedLock attributes(LockRank::kAttributes, "attributes"), leaf(LockRank::kLeaf, "leaf");
  const std::unique_lock first(list);
  const std::shared_lock second(index);
  const std::unique_lock third(attributes);
  const std::shared_lock fourth(leaf);
  EXPECT_TRUE(first.owns_lock() && second.owns_lock() && third.owns_lock() && fourth.owns_lock());
}

TEST(OrderedLock, AnAttemptIsFreeOfTheOrder) {
  OrderedLock one(LockRank::kIndex, "one"), two(LockRank::kIndex, "two"),
      list(LockRank::kVolumeList, "list");
  const std::unique_lock held(one);
  const std::shared_lock equal(two, std::try_to_lock);
  const std::unique_lock lower(list, std::try_to_lock);
  EXPECT_TRUE(equal.owns_lock());
  EXPECT_TRUE(lower.owns_lock());
}

TEST(OrderedLock, AReleasedLockNoLongerCounts) {
  OrderedLock list(LockRank::kVolumeList, "list"), leaf(LockRank::kLeaf, "leaf");
  std::unique_lock first(leaf);
  first.unlock();
  std::unique_lock second(list);
  first.lock();
  second.unlock();  // out of order, as a moved-on scope may do
  first.unlock();
  second.lock();
  EXPECT_TRUE(second.owns_lock());
}

}  // namespace
}  // namespace quilmark
