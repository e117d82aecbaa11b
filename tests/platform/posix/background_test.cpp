#include "platform/background.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <string>

namespace quilmark {
namespace {

constexpr uint32_t kLongMs = 60'000;  // a limit that only a hanging test reaches

// The name that a job finds on its thread.
std::string NameInside(const char* name) {
  char seen[64] = {};
  EXPECT_TRUE(RunBackground(name, [&] { pthread_getname_np(pthread_self(), seen, sizeof seen); }));
  EXPECT_TRUE(WaitForBackgroundJobs(kLongMs));
  return seen;
}

TEST(PosixBackground, TheThreadCarriesTheNameOfTheJob) {
  EXPECT_EQ(NameInside("do_search"), "do_search");
  EXPECT_EQ(NameInside("refresh_results_after_volume_removal"), "refresh_results");
}

TEST(PosixBackground, AThreadThatCannotStartIsReported) {
  pthread_attr_t former, impossible;
  ASSERT_EQ(pthread_getattr_default_np(&former), 0);
  pthread_attr_init(&impossible);
  ASSERT_EQ(pthread_attr_setstacksize(&impossible, size_t{1} << 46), 0);  // half of all addresses
  ASSERT_EQ(pthread_setattr_default_np(&impossible), 0);
  bool ran = false;
  const bool started = RunBackground("do_search", [&] { ran = true; });
  ASSERT_EQ(pthread_setattr_default_np(&former), 0);
  EXPECT_FALSE(started);
  EXPECT_TRUE(WaitForBackgroundJobs(0));
  EXPECT_FALSE(ran);
}

}  // namespace
}  // namespace quilmark
