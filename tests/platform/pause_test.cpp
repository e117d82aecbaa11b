#include "platform/pause.h"

#include <gtest/gtest.h>

#include <thread>

namespace quilmark {
namespace {

TEST(Pause, IsNoneWhereNobodyWantsIt) {
  Pause pause;
  const std::atomic<bool> wanted = false;
  pause.Sleep(UINT32_MAX, wanted);  // or the test would not end
}

TEST(Pause, EndsByItself) {
  Pause pause;
  const std::atomic<bool> wanted = true;
  pause.Sleep(1, wanted);
  EXPECT_TRUE(wanted);
}

// Whether the sleeper waits already or has yet to look.
TEST(Pause, EndsOnceItIsNoLongerWantedAndSomebodyWakesIt) {
  for (int round = 0; round < 50; ++round) {
    Pause pause;
    std::atomic<bool> wanted = true;
    std::thread sleeper([&] { pause.Sleep(UINT32_MAX, wanted); });
    wanted = false;
    pause.Wake();
    sleeper.join();
  }
}

}  // namespace
}  // namespace quilmark
