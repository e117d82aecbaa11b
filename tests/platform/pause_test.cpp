#include "platform/pause.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "support/gate.h"

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
  pause.Sleep(1, wanted);  // or the test would not end
}

TEST(Pause, GoesOnWhileItIsWantedWhoeverWakesIt) {
  Pause pause;
  std::atomic<bool> wanted = true, isBegun = false, endedEarly = false;
  std::thread sleeper([&] {
    isBegun = true;
    pause.Sleep(UINT32_MAX, wanted);
    endedEarly = wanted.load();
  });
  EXPECT_TRUE(WaitUntil([&] { return isBegun.load(); }));
  for (int wakes = 0; wakes < 1'000; ++wakes) pause.Wake();
  wanted = false;
  pause.Wake();
  sleeper.join();
  EXPECT_FALSE(endedEarly);
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
