#include <chrono>
#include <shared_mutex>
#include <string>

#include "config/translate.h"
#include "content/run/content_run.h"
#include "content/run/read_ahead.h"
#include "content/run/status_text.h"

namespace quilmark {

namespace {

constexpr uint64_t kPublishEveryMs = 250;
constexpr uint64_t kLeastProgressMs = 101;
constexpr uint64_t kFilesAProgress = 5;

// The tick is the caller's alone if so much time has passed since the last, and nobody else came first.
bool ClaimTick(std::atomic<uint64_t>& last, uint64_t now, uint64_t leastMs) {
  uint64_t held = last;
  // The clock of another thread may be ahead.
  return now >= held && now - held >= leastMs && last.compare_exchange_strong(held, now);
}

// One worker on its way.
class ContentWorker {
 public:
  explicit ContentWorker(const ContentWorkerContext& context)
      : context_(context),
        run_(*context.run),
        slice_(run_.slices[context.WorkerIndex]),
        matcher_(run_.plan),
        check_(run_.Generation, &slice_.steps) {}

  void Run() {
    while (IsWanted()) {
      const size_t index = slice_.next++;
      if (index >= slice_.end) break;
      if (!run_.Generation.IsCurrent()) return;
      LookAt(run_.Candidates[index]);
    }
    if (run_.Generation.IsCurrent()) HandOver();
    PublishIfDue(kPublishEveryMs + 1);
  }

 private:
  // Another worker has not taken the slice over.
  bool IsWanted() const { return slice_.turn == context_.turn; }

  void LookAt(const MatchItem& candidate) {
    if (candidate.volume == nullptr) return;
    TakePath(candidate);
    if (path_.empty()) return;
    const auto start = std::chrono::steady_clock::now();
    const FileMatch outcome = matcher_.Match(path_, check_);
    NotePace(std::chrono::steady_clock::now() - start);
    ++run_.outcomes[static_cast<size_t>(outcome)];
    if (outcome == FileMatch::kHit) TakeHit(candidate);
    TellProgress(++run_.Processed);
  }

  void TakePath(const MatchItem& candidate) {
    const std::shared_lock lock(candidate.volume->indexLock);
    BuildPathInto(*candidate.volume, candidate.index, path_);
  }

  void NotePace(std::chrono::nanoseconds took) {
    slice_.waitsForDisk = pace_.IsSlow(took, matcher_.BytesOfLast());
    if (slice_.waitsForDisk) WantReadAhead(context_.run);
  }

  void TakeHit(const MatchItem& candidate) {
    {
      const std::scoped_lock lock(slice_.lotMutex);
      slice_.lot.push_back(candidate);
      if (slice_.lot.size() < kHitsALot) return;
    }
    if (!run_.Generation.IsCurrent()) return;
    HandOver();
    // More than the interval, as at the end of a slice.
    PublishIfDue(kPublishEveryMs + 1);
  }

  void HandOver() {
    ResultSet lot;
    {
      const std::scoped_lock lock(slice_.lotMutex);
      lot.swap(slice_.lot);
    }
    if (lot.empty()) return;
    const std::scoped_lock lock(run_.publish.ResultsMutex);
    ResultSet& shared = run_.publish.SharedResults;
    if (!run_.publish.isClosed) shared.insert(shared.end(), lot.begin(), lot.end());
  }

  void PublishIfDue(uint64_t leastMs) {
    // One that comes back late would put a part over the whole.
    if (IsWanted() && ClaimTick(run_.LastPublishTick, run_.tick(), leastMs))
      PublishPartialResults(run_.publish);
  }

  void TellProgress(uint64_t processed) {
    if (processed % kFilesAProgress != 0 || !IsWanted()) return;
    if (!ClaimTick(run_.LastProgressTick, run_.tick(), kLeastProgressMs)) return;
    PostContentStatus(run_.Generation, ContentStatus::kProgress, processed, run_.TotalCount());
  }

  const ContentWorkerContext& context_;
  ContentRun& run_;
  ContentSlice& slice_;
  FileMatcher matcher_;
  const WorkCheck check_;
  DiskPace pace_;
  std::u16string path_;  // of the candidate that is looked at
};

}  // namespace

void RunContentWorker(const ContentWorkerContext& context) { ContentWorker(context).Run(); }

void PublishPartialResults(PublishState& state) {
  if (!state.Generation.IsCurrent()) return;
  std::shared_ptr<const ResultSet> snapshot;
  {
    const std::scoped_lock lock(state.ResultsMutex);
    if (state.SharedResults.empty() || state.isClosed) return;
    snapshot = std::make_shared<const ResultSet>(state.SharedResults);
  }
  PublishResults(state.Generation, ResultKind::kPartial, std::move(snapshot), state.keepSort);
}

}  // namespace quilmark
