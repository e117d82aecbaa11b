#include "platform/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <limits>

#include "support/gate.h"

namespace quilmark {
namespace {

FileTime FileTimeOf(std::chrono::system_clock::time_point time) {
  using Steps = std::chrono::duration<int64_t, std::ratio<1, 10'000'000>>;
  const auto steps = std::chrono::duration_cast<Steps>(time.time_since_epoch()).count();
  return kFileTimeOfUnixEpoch + static_cast<FileTime>(steps);
}

TEST(Clock, CountsFrom1601) {
  EXPECT_EQ(FileTimeOfUnix(0, 0), kFileTimeOfUnixEpoch);
  EXPECT_EQ(FileTimeOfUnix(1, 0), kFileTimeOfUnixEpoch + kFileTimePerSecond);
  EXPECT_EQ(FileTimeOfUnix(0, 999'999'999), kFileTimeOfUnixEpoch + 9'999'999);
  EXPECT_EQ(FileTimeOfUnix(0, 99), kFileTimeOfUnixEpoch);
  EXPECT_EQ(FileTimeOfUnix(-1, 500'000'000), kFileTimeOfUnixEpoch - 5'000'000);
  EXPECT_EQ(FileTimeOfUnix(1'700'000'000, 123'456'700), 133'444'736'001'234'567u);
}

TEST(Clock, AMomentBefore1601Is0) {
  EXPECT_EQ(FileTimeOfUnix(-11'644'473'600, 0), 0u);
  EXPECT_EQ(FileTimeOfUnix(-11'644'473'600, 100), 1u);
  EXPECT_EQ(FileTimeOfUnix(-11'644'473'601, 999'999'999), 0u);
  EXPECT_EQ(FileTimeOfUnix(std::numeric_limits<int64_t>::min(), 0), 0u);
}

TEST(Clock, AMomentBeyondAllDatesIsTheLastOne) {
  const auto last = static_cast<FileTime>(std::numeric_limits<int64_t>::max());
  EXPECT_EQ(FileTimeOfUnix(std::numeric_limits<int64_t>::max(), 999'999'999), last);
  EXPECT_LE(FileTimeOfUnix(910'692'730'000, 4'294'967'295), last);
}

TEST(Clock, NowLiesBetweenTwoLooksAtTheStandardClock) {
  // Windows' own clock goes in steps of up to 16 ms where the standard library asks the coarse one.
  constexpr FileTime kStep = kFileTimePerSecond / 50;
  const FileTime before = FileTimeOf(std::chrono::system_clock::now());
  const FileTime now = NowFileTime();
  const FileTime after = FileTimeOf(std::chrono::system_clock::now());
  EXPECT_GE(now + kStep, before);
  EXPECT_LE(now, after + kStep);
}

TEST(Clock, TicksGoOnWhileAThreadSleeps) {
  const uint64_t before = TickMs();
  // The counter of Windows moves in steps of up to 16 ms, that of Wine when its server has its turn.
  EXPECT_TRUE(WaitUntil([before] { return TickMs() - before >= 20; }));
}

TEST(Clock, LocalTimeAgreesWithTheCLibrary) {
  // Winter and summer, ends of days, months and years, a leap day.
  for (const int64_t seconds :
       {1'700'000'000, 1'719'849'599, 1'735'689'599, 1'735'689'600, 1'709'210'096}) {
    const auto time = static_cast<std::time_t>(seconds);
    const std::tm expected = *std::localtime(&time);
    const LocalTime local = LocalTimeOf(FileTimeOfUnix(seconds, 987'000'000));
    EXPECT_EQ(local.year, expected.tm_year + 1900);
    EXPECT_EQ(local.month, expected.tm_mon + 1);
    EXPECT_EQ(local.day, expected.tm_mday);
    EXPECT_EQ(local.hour, expected.tm_hour);
    EXPECT_EQ(local.minute, expected.tm_min);
    EXPECT_EQ(local.second, expected.tm_sec);
    EXPECT_EQ(local.millisecond, 987);
  }
}

TEST(Clock, NowLocalIsTheLocalTimeOfNow) {
  const LocalTime before = LocalTimeOf(NowFileTime()), now = NowLocal(),
                  after = LocalTimeOf(NowFileTime());
  EXPECT_TRUE(now.year == before.year || now.year == after.year);
  EXPECT_TRUE(now.hour == before.hour || now.hour == after.hour);
  EXPECT_TRUE(now.minute == before.minute || now.minute == after.minute);
}

TEST(Clock, FindsTheMomentOfALocalTime) {
  // Not the present one, which comes twice on the night in autumn when clocks are set back.
  for (const int64_t seconds : {1'700'000'000, 1'719'849'599}) {
    const FileTime moment = FileTimeOfUnix(seconds, 987'000'000);
    EXPECT_EQ(FileTimeOfLocal(LocalTimeOf(moment)), moment);
  }
  EXPECT_FALSE(FileTimeOfLocal({.year = 2025, .month = 2, .day = 30}).has_value());
  EXPECT_FALSE(FileTimeOfLocal({.year = 2025, .month = 13, .day = 1}).has_value());
  EXPECT_FALSE(FileTimeOfLocal({.year = 1500, .month = 1, .day = 1}).has_value());
}

}  // namespace
}  // namespace quilmark
