// Jobs beside busy processors and each other. Run under ThreadSanitizer as well.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "platform/background.h"

namespace quilmark {
namespace {

constexpr uint32_t kLongMs = 60'000;  // a limit that only a hanging test reaches

TEST(BackgroundConcurrency, EachJobRunsWhileTheProcessorsAreBusy) {
  std::atomic<bool> done = false;
  std::thread busy([&] {
    while (!done) {
    }
  });
  int ran = 0;
  for (int i = 1; i <= 300; ++i) {
    ASSERT_TRUE(RunBackground("do_search", [&] { ++ran; }));
    EXPECT_TRUE(WaitForBackgroundJobs(kLongMs));
    EXPECT_EQ(ran, i);
  }
  done = true;
  busy.join();
}

TEST(BackgroundConcurrency, ManyJobsAllEnd) {
  std::atomic<int> ended = 0;
  for (int i = 0; i < 100; ++i) ASSERT_TRUE(RunBackground("do_search", [&] { ++ended; }));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_EQ(ended, 100);
}

}  // namespace
}  // namespace quilmark
