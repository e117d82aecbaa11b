// The workers of one content search: each goes through its own slice of the candidates.
//
// There is no queue and no work stealing. The thread of the search starts the workers and waits for
// them; what they share is held by each of them, since a worker whose file hangs is left behind.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "content/run/file_matcher.h"
#include "platform/clock.h"
#include "search/results/search_session.h"

namespace quilmark {

// A worker hands over its hits in lots of so many.
inline constexpr size_t kHitsALot = 16;
// Chosen: a file during which nothing moves for so long hangs, and another worker goes on behind it.
inline constexpr uint32_t kHungFileMs = 10'000;
inline constexpr int kMostContentThreads = 64;

// How many kinds of FileMatch there are.
inline constexpr size_t kMatchKinds = static_cast<size_t>(FileMatch::kNoArchive) + 1;

// The candidates of one worker, and who is at them.
struct alignas(64) ContentSlice {
  std::atomic<size_t> next = 0;            // the candidate that is looked at next
  size_t end = 0;                          // behind the last
  std::atomic<uint32_t> turn = 0;          // of the worker that goes on; those of former turns stop
  std::atomic<uint32_t> steps = 0;         // of that worker: stands still while a file hangs
  std::atomic<bool> waitsForDisk = false;  // its files come slower than memory gives them
  std::atomic<size_t> ahead = 0;           // behind the last candidate that was read ahead
  std::mutex lotMutex;
  ResultSet lot;  // lotMutex; hits that were not handed over, those of a worker that hangs among them
};

// Threads that read ahead of all workers of a search, for as long as these wait for the disk.
struct AheadJobs {
  std::atomic<bool> isStarted = false;
  std::mutex mutex;
  std::condition_variable wanted;
  bool isOver = false;  // mutex
};

// What PublishPartialResults needs.
struct PublishState {
  Ticket Generation;
  KeepSort keepSort = KeepSort::kNo;
  std::mutex ResultsMutex;
  ResultSet SharedResults;  // ResultsMutex; in the order in which the workers hand over
  bool isClosed = false;    // ResultsMutex; the search has ended, and nothing more is taken
};

// What the workers of one search share. Lives as long as the last of them.
struct ContentRun {
  Ticket Generation;     // that the search was started under
  ResultSet Candidates;  // not changed while it runs
  MatchPlan plan;
  size_t ChunkSize = 0;  // candidates a worker
  PublishState publish;
  std::atomic<uint64_t> LastPublishTick = 0;                  // of the last partial publication
  std::atomic<uint64_t> Processed = 0;                        // files looked at
  std::atomic<uint64_t> LastProgressTick = 0;                 // of the last progress text
  std::array<std::atomic<uint64_t>, kMatchKinds> outcomes{};  // files by FileMatch
  std::atomic<uint64_t> hungFiles = 0;
  std::vector<ContentSlice> slices;
  uint64_t (*tick)() = TickMs;
  uint32_t hungFileMs = kHungFileMs;
  void (*warm)(std::u16string_view path, uint64_t most) = WarmFileContent;
  AheadJobs ahead;

  std::mutex endMutex;
  std::condition_variable ended;
  size_t running = 0;  // endMutex; workers that have not ended, those left behind aside

  size_t TotalCount() const { return Candidates.size(); }
};

// What each worker thread receives.
struct ContentWorkerContext {
  size_t WorkerIndex = 0;  // also that of its slice
  uint32_t turn = 0;       // of the slice
  std::shared_ptr<ContentRun> run;
};

// How many workers a search has: `setting` as it is stored, 0 or less for as many as the machine has
// processors (`cores`, 0 where it does not tell), at most 64 and at most one a candidate.
[[nodiscard]] size_t ContentThreadCount(int setting, unsigned cores, size_t candidates);

// Body of a worker: looks at the candidates of its slice in order, and hands over its hits. Ends early
// once the search is stale, with what it has not handed over lost, or once another has taken its turn.
void RunContentWorker(const ContentWorkerContext& context);

// Publishes a copy of the results so far, if there are any and the search is current.
void PublishPartialResults(PublishState& state);

// Runs the workers and waits for them. Returns all hits; empty, which is not to be published, once the
// search is stale. `threads` as ContentThreadCount gives it.
[[nodiscard]] std::shared_ptr<ResultSet> RunContentWorkers(const std::shared_ptr<ContentRun>& run,
                                                           size_t threads);

}  // namespace quilmark
