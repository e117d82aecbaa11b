#include "content/run/read_ahead.h"

#include <algorithm>
#include <bit>
#include <shared_mutex>
#include <string>

#include "platform/background.h"

namespace quilmark {

namespace {

// Chosen: opening and reading a file in memory takes a tenth of this.
constexpr std::chrono::nanoseconds kSlowFile = std::chrono::microseconds(120);
constexpr int kSlowOfSixteen = 8;
constexpr std::chrono::milliseconds kLookAgain(50);

void ReadCandidate(ContentRun& run, size_t index, std::u16string& path) {
  const MatchItem& candidate = run.Candidates[index];
  if (candidate.volume == nullptr) return;
  {
    const std::shared_lock lock(candidate.volume->indexLock);
    BuildPathInto(*candidate.volume, candidate.index, path);
  }
  const bool isElsewhere = path.empty() || path.starts_with(u"\\\\");
  if (!isElsewhere) run.warm(path, kMostBytesAhead);
}

// Reads one file of each slice that wants it. False if none did.
bool ReadRound(ContentRun& run, size_t firstSlice, std::u16string& path) {
  bool hasRead = false;
  for (size_t i = 0; i < run.slices.size() && run.Generation.IsCurrent(); ++i) {
    const auto index = ClaimAhead(run.slices[(firstSlice + i) % run.slices.size()]);
    if (!index) continue;
    ReadCandidate(run, *index, path);
    hasRead = true;
  }
  return hasRead;
}

void ReadUntilOver(ContentRun& run, size_t firstSlice) {
  std::u16string path;
  while (run.Generation.IsCurrent()) {
    const bool hasRead = ReadRound(run, firstSlice, path);
    std::unique_lock lock(run.ahead.mutex);
    if (run.ahead.isOver) return;
    if (!hasRead) run.ahead.wanted.wait_for(lock, kLookAgain);
  }
}

}  // namespace

bool DiskPace::IsSlow(std::chrono::nanoseconds took, uint64_t bytes) {
  const auto expected = kSlowFile + std::chrono::nanoseconds(bytes);  // a gigabyte a second
  slow_ = static_cast<uint16_t>(slow_ << 1 | (took > expected ? 1 : 0));
  return std::popcount(slow_) >= kSlowOfSixteen;
}

std::optional<size_t> ClaimAhead(ContentSlice& slice) {
  if (!slice.waitsForDisk) return std::nullopt;
  size_t held = slice.ahead;
  for (;;) {
    const size_t next = slice.next;
    const size_t index = std::max(held, next);
    if (index >= std::min(slice.end, next + kMostFilesAhead)) return std::nullopt;
    if (slice.ahead.compare_exchange_weak(held, index + 1)) return index;
  }
}

void WantReadAhead(const std::shared_ptr<ContentRun>& run) {
  if (run->ahead.isStarted.exchange(true)) return run->ahead.wanted.notify_one();
  for (size_t i = 0; i < kAheadThreads; ++i) {
    RunBackground("content_read_ahead", [run, i] { ReadUntilOver(*run, i); });
  }
}

void EndReadAhead(ContentRun& run) {
  const std::scoped_lock lock(run.ahead.mutex);
  run.ahead.isOver = true;
  run.ahead.wanted.notify_all();
}

}  // namespace quilmark
