#include "platform/clock.h"

#include <gtest/gtest.h>
#include <time.h>

#include "support/environment.h"

namespace quilmark {
namespace {

// A time zone for its own lifetime.
class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(const char* rule) : variable_(std::in_place, "TZ", rule) { tzset(); }
  ~ScopedTimeZone() {
    variable_.reset();
    tzset();
  }
  ScopedTimeZone(const ScopedTimeZone&) = delete;
  ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

 private:
  std::optional<ScopedEnvironment> variable_;
};

constexpr const char* kMiddleEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

TEST(PosixClock, LocalTimeFollowsTheDaylightRuleOfThatMoment) {
  const ScopedTimeZone zone(kMiddleEurope);
  const LocalTime winter = LocalTimeOf(FileTimeOfUnix(1'705'320'000, 0));  // 2024-01-15 12:00:00 UTC
  EXPECT_EQ(winter.hour, 13);
  const LocalTime summer = LocalTimeOf(FileTimeOfUnix(1'721'044'800, 0));  // 2024-07-15 12:00:00 UTC
  EXPECT_EQ(summer.hour, 14);
}

TEST(PosixClock, LocalTimeCrossesTheEndOfAYear) {
  const ScopedTimeZone zone(kMiddleEurope);
  const LocalTime local =
      LocalTimeOf(FileTimeOfUnix(1'704'065'399, 999'999'900));  // 2023-12-31 23:29:59.9999999 UTC
  EXPECT_EQ(local.year, 2024);
  EXPECT_EQ(local.month, 1);
  EXPECT_EQ(local.day, 1);
  EXPECT_EQ(local.hour, 0);
  EXPECT_EQ(local.minute, 29);
  EXPECT_EQ(local.second, 59);
  EXPECT_EQ(local.millisecond, 999);
}

TEST(PosixClock, TheFirstMomentHasADate) {
  const ScopedTimeZone zone("UTC0");
  const LocalTime local = LocalTimeOf(0);
  EXPECT_EQ(local.year, 1601);
  EXPECT_EQ(local.month, 1);
  EXPECT_EQ(local.day, 1);
}

}  // namespace
}  // namespace quilmark
