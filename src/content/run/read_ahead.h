// Reads the next files of each slice before its worker comes to them. The time of a search over files
// that are in no cache is how many reads the disk has at once; over files in memory this would only be
// in the way.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "content/run/content_run.h"

namespace quilmark {

// Chosen: with two workers as many reads at once as a disk of today takes in its stride.
inline constexpr size_t kAheadThreads = 6;
// How far ahead of its worker a slice is read, and how much of each file.
inline constexpr size_t kMostFilesAhead = 32;
inline constexpr uint64_t kMostBytesAhead = 1'048'576;

// Whether a worker waits for the disk, by the files that it looked at last.
class DiskPace {
 public:
  // Takes the time and the bytes of one more file. True if half of the last sixteen took longer than
  // memory, however busy, would have.
  bool IsSlow(std::chrono::nanoseconds took, uint64_t bytes);

 private:
  uint16_t slow_ = 0;  // a bit a file
};

// The candidate of the slice that is to be read ahead next, which no other caller gets; empty where its
// worker does not wait for the disk, or enough was read ahead. Any thread.
[[nodiscard]] std::optional<size_t> ClaimAhead(ContentSlice& slice);

// Has the threads read ahead, which start with the first call of a search. Any worker.
void WantReadAhead(const std::shared_ptr<ContentRun>& run);

// Tells the threads that there is nothing more to read; they end by themselves.
void EndReadAhead(ContentRun& run);

}  // namespace quilmark
