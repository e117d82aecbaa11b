#include "platform/clock.h"

#include <time.h>

#include <cerrno>

namespace quilmark {

static timespec Now(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return now;
}

uint64_t TickMs() {
  const timespec now = Now(CLOCK_MONOTONIC);
  return static_cast<uint64_t>(now.tv_sec) * 1000 + static_cast<uint64_t>(now.tv_nsec) / 1'000'000;
}

void SleepMs(uint32_t ms) {
  timespec rest{.tv_sec = ms / 1000, .tv_nsec = static_cast<long>(ms % 1000) * 1'000'000};
  while (nanosleep(&rest, &rest) != 0 && errno == EINTR) {
  }
}

FileTime NowFileTime() {
  const timespec now = Now(CLOCK_REALTIME);
  return FileTimeOfUnix(now.tv_sec, static_cast<uint32_t>(now.tv_nsec));
}

LocalTime LocalTimeOf(FileTime time) {
  const auto sinceUnix = static_cast<int64_t>(time / kFileTimePerSecond) -
                         static_cast<int64_t>(kFileTimeOfUnixEpoch / kFileTimePerSecond);
  const auto seconds = static_cast<time_t>(sinceUnix);
  tm local{};
  if (localtime_r(&seconds, &local) == nullptr) return {};
  return {.year = local.tm_year + 1900,
          .month = local.tm_mon + 1,
          .day = local.tm_mday,
          .hour = local.tm_hour,
          .minute = local.tm_min,
          .second = local.tm_sec,
          .millisecond = static_cast<int>(time % kFileTimePerSecond / 10'000)};
}

std::optional<FileTime> FileTimeOfLocal(const LocalTime& local) {
  tm parts{};
  parts.tm_year = local.year - 1900;
  parts.tm_mon = local.month - 1;
  parts.tm_mday = local.day;
  parts.tm_hour = local.hour;
  parts.tm_min = local.minute;
  parts.tm_sec = local.second;
  parts.tm_isdst = -1;  // the rule in force then
  const time_t seconds = mktime(&parts);
  // mktime takes 30 February as 2 March.
  const bool isDay = parts.tm_mday == local.day && parts.tm_mon == local.month - 1;
  if (!isDay || local.year < 1601) return std::nullopt;
  return FileTimeOfUnix(seconds, static_cast<uint32_t>(local.millisecond) * 1'000'000);
}

}  // namespace quilmark
