// When the program may give its memory back to the system.
#pragma once

#include <cstdint>
#include <optional>

namespace quilmark {

// What the rule looks at.
struct TrimMoment {
  uint64_t nowMs = 0;       // as GetTickCount64
  uint64_t lastTrimMs = 0;  // 0: none yet
  bool isForeground = false;
  std::optional<uint32_t> lastInputMs;  // as GetLastInputInfo: 32 bits, which wrap around
};

// False within 30 seconds after the last time, and while the user works in our window.
bool MayTrim(const TrimMoment& moment);

}  // namespace quilmark
