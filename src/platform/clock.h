// Time: a millisecond counter, FILETIME values, and local time for stamps.
#pragma once

#include <cstdint>
#include <optional>

namespace quilmark {

// Milliseconds since some fixed moment, never going back.
uint64_t TickMs();

// Holds the calling thread for `ms` milliseconds or longer. On Windows it may be one tick of the
// system's clock (16 ms) less. No other thread can end it (see Pause).
void SleepMs(uint32_t ms);

// 100 ns steps since 1601-01-01 UTC, as in Windows' FILETIME.
using FileTime = uint64_t;

// 1970-01-01 UTC, and one second.
inline constexpr FileTime kFileTimeOfUnixEpoch = 116'444'736'000'000'000;
inline constexpr FileTime kFileTimePerSecond = 10'000'000;

// The time of the system's clock, which may be set back.
FileTime NowFileTime();

// Seconds and nanoseconds since 1970 UTC; a moment before 1601 gives 0.
FileTime FileTimeOfUnix(int64_t seconds, uint32_t nanoseconds);

// A moment as a calendar and a clock show it.
struct LocalTime {
  int year = 0, month = 0, day = 0;  // month and day from 1
  int hour = 0, minute = 0, second = 0, millisecond = 0;
};

// In the user's time zone, with the daylight rule in force at that moment.
LocalTime LocalTimeOf(FileTime time);

// The reverse; empty for a day that no calendar has, and before 1601.
[[nodiscard]] std::optional<FileTime> FileTimeOfLocal(const LocalTime& local);

// LocalTimeOf this moment.
LocalTime NowLocal();

}  // namespace quilmark
