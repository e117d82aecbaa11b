#include "platform/bounded_jobs.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <semaphore>
#include <stdexcept>

#include "platform/background.h"

namespace quilmark {
namespace {

constexpr uint32_t kLong = 60'000;

TEST(BoundedJobsConcurrency, AreWaitedForUntilAllHaveEnded) {
  std::atomic<int> ended = 0;
  const std::vector<std::function<void()>> works(3, [&] { ++ended; });
  EXPECT_TRUE(RunWithin("test", works, kLong));
  EXPECT_EQ(ended, 3);
}

TEST(BoundedJobsConcurrency, AreLeftAloneWhereOneHangs) {
  auto release = std::make_shared<std::binary_semaphore>(0);
  auto ended = std::make_shared<std::atomic<bool>>(false);
  EXPECT_FALSE(RunWithin("test",
                         {[] {},
                          [release, ended] {
                            release->acquire();
                            *ended = true;
                          }},
                         1));
  EXPECT_FALSE(*ended);
  release->release();
  EXPECT_TRUE(WaitForBackgroundJobs(kLong));
  EXPECT_TRUE(*ended);
}

TEST(BoundedJobsConcurrency, EndByAnExceptionToo) {
  EXPECT_TRUE(RunWithin("test", {[] { throw std::runtime_error("work"); }}, kLong));
}

TEST(BoundedJobsConcurrency, AreNone) { EXPECT_TRUE(RunWithin("test", {}, 0)); }

}  // namespace
}  // namespace quilmark
