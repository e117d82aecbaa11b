#include "shell/app/trim.h"

namespace quilmark {

bool MayTrim(const TrimMoment& moment) {
  constexpr uint64_t kLeastGapMs = 30'000;
  constexpr uint32_t kAtWorkMs = 5'000;
  if (moment.nowMs - moment.lastTrimMs < kLeastGapMs) return false;
  if (!moment.isForeground || !moment.lastInputMs) return true;
  const uint32_t idleMs = static_cast<uint32_t>(moment.nowMs) - *moment.lastInputMs;
  return idleMs >= kAtWorkMs;
}

}  // namespace quilmark
