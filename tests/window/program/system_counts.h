// What the program of the window tests has asked of the system since its start.
#pragma once

#include <atomic>
#include <cstdint>

namespace quilmark {

struct SystemCounts {
  std::atomic<int64_t> threads;               // started
  std::atomic<int64_t> reads;                 // calls that ask the disk for a file, a folder or a volume
  std::atomic<int64_t> writes;                // calls that write to a file
  std::atomic<int64_t> ownTrims, otherTrims;  // working sets that were emptied
  std::atomic<bool> refusesNames;             // a file is not told of by its name any more
};
SystemCounts& CountsOfSystem();

}  // namespace quilmark
