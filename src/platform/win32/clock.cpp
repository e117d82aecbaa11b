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

}  // namespace quilmark
