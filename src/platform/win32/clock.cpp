#include "platform/clock.h"

#include <windows.h>

namespace quilmark {

uint64_t TickMs() { return GetTickCount64(); }

void SleepMs(uint32_t ms) { Sleep(ms); }

FileTime NowFileTime() {
  FILETIME now;
  GetSystemTimePreciseAsFileTime(&now);
  return (FileTime{now.dwHighDateTime} << 32) | now.dwLowDateTime;
}

LocalTime LocalTimeOf(FileTime time) {
  const FILETIME moment{.dwLowDateTime = static_cast<DWORD>(time),
                        .dwHighDateTime = static_cast<DWORD>(time >> 32)};
  SYSTEMTIME universal, local;
  if (!FileTimeToSystemTime(&moment, &universal)) return {};
  if (!SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local)) return {};
  return {.year = local.wYear,
          .month = local.wMonth,
          .day = local.wDay,
          .hour = local.wHour,
          .minute = local.wMinute,
          .second = local.wSecond,
          .millisecond = local.wMilliseconds};
}

std::optional<FileTime> FileTimeOfLocal(const LocalTime& local) {
  const auto word = [](int value) { return static_cast<WORD>(value); };
  const SYSTEMTIME time = {.wYear = word(local.year),
                           .wMonth = word(local.month),
                           .wDayOfWeek = 0,
                           .wDay = word(local.day),
                           .wHour = word(local.hour),
                           .wMinute = word(local.minute),
                           .wSecond = word(local.second),
                           .wMilliseconds = word(local.millisecond)};
  SYSTEMTIME universal;
  FILETIME moment;
  if (!SystemTimeToFileTime(&time, &moment)) return std::nullopt;  // tells days that are none
  if (!TzSpecificLocalTimeToSystemTime(nullptr, &time, &universal)) return std::nullopt;
  if (!SystemTimeToFileTime(&universal, &moment)) return std::nullopt;
  return (FileTime{moment.dwHighDateTime} << 32) | moment.dwLowDateTime;
}

}  // namespace quilmark
