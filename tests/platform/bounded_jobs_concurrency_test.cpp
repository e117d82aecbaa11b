#include "platform/bounded_jobs.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>

#include "platform/background.h"
#include "support/gate.h"

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
  auto door = std::make_shared<Door>();
  auto ended = std::make_shared<std::atomic<bool>>(false);
  EXPECT_FALSE(RunWithin("test",
                         {[] {},
                          [door, ended] {
                            door->Pass();
                            *ended = true;
                          }},
                         1));
  EXPECT_FALSE(*ended);
  door->Open();
  EXPECT_TRUE(WaitForBackgroundJobs(kLong));
  EXPECT_TRUE(*ended);
}

TEST(BoundedJobsConcurrency, EndByAnExceptionToo) {
  EXPECT_TRUE(RunWithin("test", {[] { throw std::runtime_error("work"); }}, kLong));
}

TEST(BoundedJobsConcurrency, AreNone) { EXPECT_TRUE(RunWithin("test", {}, 0)); }

}  // namespace
}  // namespace quilmark
