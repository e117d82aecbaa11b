#include "content/run/content_run.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "content/run/read_ahead.h"
#include "platform/background.h"

namespace quilmark {

namespace {

// How often the workers are looked after, and how long those of a stale search are waited for.
constexpr uint32_t kWatchMs = 250, kMostStaleWaitMs = 2'000;

// However the worker ends. One that was left behind was counted out by whoever did so.
struct CountOut {
  const ContentWorkerContext& context;
  ~CountOut() {
    ContentRun& run = *context.run;
    const std::scoped_lock lock(run.endMutex);
    ContentSlice& slice = run.slices[context.WorkerIndex];
    if (slice.turn != context.turn) return;
    slice.next = slice.end + 1;  // also where an exception ended it: nobody goes on with the rest
    --run.running;
    run.ended.notify_all();
  }
};

// A worker for the slice, which is counted in already.
void StartWorker(const ContentWorkerContext& context) {
  const std::function<void()> job = [context] {
    const CountOut out{context};
    RunContentWorker(context);
  };
  if (!RunBackground("content_search_worker", job)) job();
}

// Sees which slices stand still.
class Watch {
 public:
  explicit Watch(const ContentRun& run) : seen_(run.slices.size()) {}

  // Whether nothing has moved in the slice for so long.
  bool Hangs(const ContentSlice& slice, size_t index, uint64_t now, uint32_t mostMs) {
    Seen& seen = seen_[index];
    const uint32_t steps = slice.steps;
    if (steps != seen.steps || seen.sinceMs == 0) seen = {steps, now};
    return now - seen.sinceMs >= mostMs;
  }

  void Forget(size_t index) { seen_[index] = {}; }

 private:
  struct Seen {
    uint32_t steps = 0;
    uint64_t sinceMs = 0;
  };
  std::vector<Seen> seen_;
};

bool IsAtWork(const ContentSlice& slice) { return slice.next <= slice.end; }

// The worker of the slice is left to its file: another one goes on behind it.
void ReplaceWorker(const std::shared_ptr<ContentRun>& run, size_t index) {
  ContentSlice& slice = run->slices[index];
  uint32_t turn = 0;
  {
    const std::scoped_lock lock(run->endMutex);
    if (!IsAtWork(slice)) return;  // it has ended meanwhile
    turn = ++slice.turn;
  }
  ++run->hungFiles;
  StartWorker({.WorkerIndex = index, .turn = turn, .run = run});
}

void ReplaceHungWorkers(const std::shared_ptr<ContentRun>& run, Watch& watch) {
  const uint64_t now = TickMs();
  for (size_t i = 0; i < run->slices.size(); ++i) {
    const ContentSlice& slice = run->slices[i];
    if (!IsAtWork(slice) || !watch.Hangs(slice, i, now, run->hungFileMs)) continue;
    watch.Forget(i);
    ReplaceWorker(run, i);
  }
}

// Returns when every worker has ended; of a stale search also when that takes too long.
void WaitForWorkers(const std::shared_ptr<ContentRun>& run) {
  Watch watch(*run);
  uint64_t staleSinceMs = 0;
  std::unique_lock lock(run->endMutex);
  const auto haveEnded = [&run] { return run->running == 0; };
  while (!run->ended.wait_for(lock, std::chrono::milliseconds(kWatchMs), haveEnded)) {
    lock.unlock();
    if (run->Generation.IsCurrent()) {
      ReplaceHungWorkers(run, watch);
    } else if (staleSinceMs == 0) {
      staleSinceMs = TickMs();
    }
    lock.lock();
    if (staleSinceMs != 0 && TickMs() - staleSinceMs >= kMostStaleWaitMs) return;
  }
}

void CutIntoSlices(ContentRun& run, size_t threads) {
  const size_t count = run.TotalCount();
  run.ChunkSize = (count + threads - 1) / threads;
  run.slices = std::vector<ContentSlice>(threads);
  for (size_t i = 0; i < threads; ++i) {
    run.slices[i].next = std::min(i * run.ChunkSize, count);
    run.slices[i].end = std::min((i + 1) * run.ChunkSize, count);
  }
}

}  // namespace

size_t ContentThreadCount(int setting, unsigned cores, size_t candidates) {
  const int wanted = setting < 1 ? static_cast<int>(std::clamp(cores, 1u, 1'024u)) : setting;
  const auto threads = static_cast<size_t>(std::min(wanted, kMostContentThreads));
  return candidates == 0 ? threads : std::min(threads, candidates);
}

std::shared_ptr<ResultSet> RunContentWorkers(const std::shared_ptr<ContentRun>& run, size_t threads) {
  run->publish.Generation = run->Generation;
  CutIntoSlices(*run, threads);
  run->running = threads;
  for (size_t i = 0; i < threads; ++i) StartWorker({.WorkerIndex = i, .turn = 0, .run = run});
  WaitForWorkers(run);
  EndReadAhead(*run);
  const std::scoped_lock lock(run->publish.ResultsMutex);
  run->publish.isClosed = true;
  if (!run->Generation.IsCurrent()) return std::make_shared<ResultSet>();
  return std::make_shared<ResultSet>(std::move(run->publish.SharedResults));
}

}  // namespace quilmark
