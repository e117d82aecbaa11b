// Days in zones whose clocks are put forward.
#include <gtest/gtest.h>
#include <time.h>

#include "cli/filter_options.h"
#include "support/environment.h"

namespace quilmark {
namespace {

constexpr FileTime kHour = 3'600 * kFileTimePerSecond;

// The zone of the process, until its end.
class Zone {
 public:
  explicit Zone(const char* rule) : rule_(std::in_place, "TZ", rule) { tzset(); }
  ~Zone() {
    rule_.reset();
    tzset();
  }

 private:
  std::optional<ScopedEnvironment> rule_;
};

DateRange DayOf(const char* text) {
  const auto parsed = ParseDateRange(text, 0);
  EXPECT_EQ(parsed.error, "") << text;
  return parsed.value;
}

FileTime Length(const DateRange& range) { return range.to - range.from + 1; }

TEST(FilterDays, AreShorterOrLongerWhereTheClockChanges) {
  const Zone zone("CET-1CEST,M3.5.0,M10.5.0/3");
  EXPECT_EQ(Length(DayOf("2025-03-29")), 24 * kHour);
  EXPECT_EQ(Length(DayOf("2025-03-30")), 23 * kHour);
  EXPECT_EQ(Length(DayOf("2025-10-26")), 25 * kHour);
}

TEST(FilterDays, BeginLaterWhereTheClockSkipsMidnight) {
  const Zone zone("BRT3BRST,M11.1.0/0,M2.3.0/0");
  const DateRange before = DayOf("2018-11-03"), day = DayOf("2018-11-04"), after = DayOf("2018-11-05");
  EXPECT_EQ(Length(day), 23 * kHour);
  EXPECT_EQ(before.to + 1, day.from);
  EXPECT_EQ(day.to + 1, after.from);
  EXPECT_EQ(DayOf("2018-11-03..2018-11-05"), (DateRange{before.from, after.to}));
}

}  // namespace
}  // namespace quilmark
