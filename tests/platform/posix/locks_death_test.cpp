#include <gtest/gtest.h>

#include <mutex>
#include <shared_mutex>

#include "platform/locks.h"

namespace quilmark {
namespace {

#ifdef QUILMARK_DEBUG

TEST(OrderedLockDeathTest, WaitingBelowAHeldRankEndsTheProgram) {
  OrderedLock list(LockRank::kVolumeList, "the list"), leaf(LockRank::kLeaf, "the leaf");
  const std::unique_lock held(leaf);
  EXPECT_DEATH(list.lock(), "waits for 'the list' \\(rank 1\\) while it holds 'the leaf' \\(rank 4\\)");
  EXPECT_DEATH(list.lock_shared(),
               "waits for 'the list' \\(rank 1\\) while it holds 'the leaf' \\(rank 4\\)");
}

TEST(OrderedLockDeathTest, WaitingForAnEqualRankEndsTheProgram) {
  OrderedLock one(LockRank::kIndex, "index C"), two(LockRank::kIndex, "index D");
  const std::shared_lock held(one);
  EXPECT_DEATH(two.lock_shared(), "waits for 'index D' .* while it holds 'index C'");
}

TEST(OrderedLockDeathTest, WaitingForTheSameLockTwiceEndsTheProgram) {
  OrderedLock lock(LockRank::kIndex, "index");
  const std::shared_lock held(lock);
  EXPECT_DEATH(lock.lock_shared(), "waits for 'index' .* while it holds 'index'");
}

TEST(OrderedLockDeathTest, ALockTakenByAnAttemptCounts) {
  OrderedLock index(LockRank::kIndex, "index"), leaf(LockRank::kLeaf, "leaf");
  const std::unique_lock held(leaf, std::try_to_lock);
  ASSERT_TRUE(held.owns_lock());
  EXPECT_DEATH(index.lock(), "waits for 'index' .* while it holds 'leaf'");
}

TEST(OrderedLockDeathTest, GivingBackWhatIsNotHeldEndsTheProgram) {
  OrderedLock lock(LockRank::kIndex, "index");
  EXPECT_DEATH(lock.unlock(), "releases what it does not hold: 'index'");
}

TEST(OrderedLockDeathTest, DebugBuildsSayThatTheyCheck) { EXPECT_TRUE(ChecksLockOrder()); }

#else

TEST(OrderedLock, BuildsForUsersDoNotCheckTheOrder) {
  OrderedLock one(LockRank::kIndex, "index C"), two(LockRank::kIndex, "index D");
  const std::shared_lock first(one), second(two);
  EXPECT_TRUE(second.owns_lock());
  EXPECT_FALSE(ChecksLockOrder());
}

#endif

}  // namespace
}  // namespace quilmark
