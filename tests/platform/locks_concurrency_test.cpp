#include <gtest/gtest.h>

#include <cstdint>
#include <mutex>
#include <shared_mutex>
#include <thread>
#include <vector>

#include "platform/locks.h"

namespace quilmark {
namespace {

constexpr int kThreads = 4;
constexpr int kSteps = 5'000;

// Runs `work` on some threads at once and waits for all.
template <typename Work>
void OnThreads(Work work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) threads.emplace_back(work, i);
  for (std::thread& thread : threads) thread.join();
}

TEST(OrderedLockConcurrency, ExclusiveHoldersFollowOneAnother) {
  OrderedLock lock(LockRank::kIndex, "index");
  int64_t count = 0;
  OnThreads([&](int) {
    for (int step = 0; step < kSteps; ++step) {
      const std::unique_lock held(lock);
      ++count;
    }
  });
  EXPECT_EQ(count, int64_t{kThreads} * kSteps);
}

TEST(OrderedLockConcurrency, ReadersSeeWholeWrites) {
  OrderedLock lock(LockRank::kIndex, "index");
  int64_t first = 0, second = 0, torn = 0;
  OrderedLock tornLock(LockRank::kLeaf, "torn");
  OnThreads([&](int thread) {
    for (int step = 0; step < kSteps; ++step) {
      if (thread == 0) {
        const std::unique_lock held(lock);
        ++first;
        ++second;
        continue;
      }
      const std::shared_lock held(lock);
      if (first == second) continue;
      const std::unique_lock counting(tornLock);
      ++torn;
    }
  });
  EXPECT_EQ(first, kSteps);
  EXPECT_EQ(torn, 0);
}

TEST(OrderedLockConcurrency, AttemptsNeverShareWithAnExclusiveHolder) {
  OrderedLock lock(LockRank::kIndex, "index");
  int64_t value = 0;
  std::vector<int64_t> taken(kThreads, 0);
  OnThreads([&](int thread) {
    for (int step = 0; step < kSteps; ++step) {
      const std::unique_lock held(lock, std::try_to_lock);
      if (!held) continue;
      ++value;
      ++taken[static_cast<size_t>(thread)];
    }
  });
  int64_t sum = 0;
  for (const int64_t count : taken) sum += count;
  EXPECT_EQ(value, sum);
  EXPECT_GT(value, 0);
}

}  // namespace
}  // namespace quilmark
