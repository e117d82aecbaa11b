#include "platform/clock.h"

#include <limits>

namespace quilmark {

FileTime FileTimeOfUnix(int64_t seconds, uint32_t nanoseconds) {
  constexpr auto kPerSecond = static_cast<int64_t>(kFileTimePerSecond);
  constexpr auto kEpoch = static_cast<int64_t>(kFileTimeOfUnixEpoch);
  constexpr int64_t kEarliest = -kEpoch / kPerSecond;
  constexpr int64_t kLatest = (std::numeric_limits<int64_t>::max() - kEpoch) / kPerSecond - 5;
  if (seconds < kEarliest) return 0;
  if (seconds > kLatest) return static_cast<FileTime>(std::numeric_limits<int64_t>::max());
  return static_cast<FileTime>(seconds * kPerSecond + kEpoch) + nanoseconds / 100;
}

LocalTime NowLocal() { return LocalTimeOf(NowFileTime()); }

}  // namespace quilmark
