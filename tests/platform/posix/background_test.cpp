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

void RunWhereNoThreadCanStart() {
  pthread_attr_t impossible;
  pthread_attr_init(&impossible);
  pthread_attr_setstacksize(&impossible, size_t{1} << 46);  // half of all addresses
  pthread_setattr_default_np(&impossible);
  RunBackground("do_search", [] {});
}

TEST(PosixBackgroundDeathTest, AThreadThatCannotStartEndsTheProgramAndSaysWhich) {
  EXPECT_DEATH(RunWhereNoThreadCanStart(), "no thread for do_search");
}

}  // namespace
}  // namespace quilmark
