// Time: a millisecond counter, FILETIME values, and local time for stamps.
#pragma once

#include <cstdint>
#include <optional>

namespace quilmark {

// Milliseconds since some fixed moment, never going back.
uint64_t TickMs();

void SleepMs(uint32_t ms);

// 100 ns steps since 1601-01-01 UTC, as in Windows' FILETIME.
using FileTime = uint64_t;
inline constexpr FileTime kFileTimeOfUnixEpoch = 116'444'736'000'000'000;
inline constexpr FileTime kFileTimePerSecond = 10'000'000;

FileTime NowFileTime();

// Seconds and nanoseconds since 1970 UTC; a moment before 1601 gives 0.
FileTime FileTimeOfUnix(int64_t seconds, uint32_t nanoseconds);

struct LocalTime {
  int year = 0, month = 0, day = 0;  // month and day from 1
  int hour = 0, minute = 0, second = 0, millisecond = 0;
};

// In the user's time zone, with the daylight rule in force at that moment.
LocalTime LocalTimeOf(FileTime time);

// The reverse; empty for a day that no calendar has, and before 1601.
std::optional<FileTime> FileTimeOfLocal(const LocalTime& local);
LocalTime NowLocal();

}  // namespace quilmark
