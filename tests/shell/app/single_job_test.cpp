#include "shell/app/single_job.h"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>

namespace quilmark {
namespace {

TEST(SingleJob, DropsASecondOneWhileTheFirstRuns) {
  static SingleJob job;
  std::promise<void> mayEnd;
  auto ended = mayEnd.get_future().share();
  std::atomic<int> runs = 0;
  EXPECT_TRUE(job.Start("first", [ended, &runs] {
    ++runs;
    ended.wait();
  }));
  EXPECT_FALSE(job.Start("second", [&runs] { ++runs; }));
  mayEnd.set_value();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_TRUE(job.Start("third", [&runs] { ++runs; }));
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(runs, 2);
}

TEST(SingleJob, MayRunAgainAfterAnException) {
  static SingleJob job;
  EXPECT_TRUE(job.Start("thrown", [] { throw std::runtime_error("on purpose"); }));
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_TRUE(job.Start("again", [] {}));
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
}

}  // namespace
}  // namespace quilmark
