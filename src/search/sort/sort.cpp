#include "search/sort/sort.h"

#include <algorithm>
#include <mutex>
#include <thread>

#include "config/attr_counters.h"
#include "config/log.h"
#include "config/translate.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/format.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_jobs.h"
#include "search/sort/sort_rows.h"

namespace quilmark {

namespace {

constexpr size_t kProgressStep = 800;
constexpr uint64_t kProgressMs = 151;
constexpr unsigned kLeastWorkers = 2, kMostWorkers = 6;

bool NeedsAttributes(int column) { return column >= kColumnSize && column <= kColumnCreated; }

enum class Order { kWhole, kOfWhatIsKnown };

bool PublishSorted(const SortJob& job, std::vector<MatchItem> rows, Order order) {
  return PublishResults(job.generation, ResultKind::kSorted,
                        std::make_shared<const ResultSet>(std::move(rows)), true,
                        order == Order::kWhole ? SetOrder{job.column, job.ascending} : SetOrder());
}

// Fetches attributes with several threads, since this waits for the disk, and tells how far it has come.
class Fetch {
 public:
  Fetch(const SortJob& job, const std::vector<MatchItem>& missing, size_t rows)
      : job_(job), missing_(missing), showsProgress_(ShowsFetchProgress(missing.size(), rows)) {}

  void Run() {
    const unsigned half = std::thread::hardware_concurrency() / 2;
    const size_t workers = std::clamp(half, kLeastWorkers, kMostWorkers);
    constexpr size_t kRowsAPiece = 64;
    OnThreads(workers, missing_.size(), kRowsAPiece,
              [this](size_t, size_t begin, size_t end) { FetchRows(begin, end); });
  }

 private:
  void FetchRows(size_t begin, size_t end) {
    const Insist insist = job_.column == kColumnSize ? Insist::kNo : Insist::kOnDisk;
    for (size_t i = begin; i < end && IsCurrent(job_.generation); ++i) {
      AttrEntry entry;
      EnsureFileAttributes(missing_[i].volume, missing_[i].index, entry, insist);
      Report(++done_);
    }
  }

  void Report(size_t done) {
    if (!showsProgress_ || done % kProgressStep != 0) return;
    uint64_t last = lastReportMs_;
    const uint64_t now = TickMs();
    if (now - last < kProgressMs || !lastReportMs_.compare_exchange_strong(last, now)) return;
    PostText(searchHooks.window, WM_SEARCH_STATUS, job_.generation,
             FormatText(TranslateOr(u"Status_HydrateProgressFmt",
                                    u"Extracting properties... (Processed %zu / %zu)"),
                        done, missing_.size()));
  }

  const SortJob& job_;
  const std::vector<MatchItem>& missing_;
  const bool showsProgress_;
  std::atomic<size_t> done_ = 0;
  std::atomic<uint64_t> lastReportMs_ = TickMs();
};

struct Timing {
  uint64_t startMs = TickMs(), hydrateMs = 0;
  uint64_t hits = AttrCounters().hits, misses = AttrCounters().misses;
  bool isTwoPhase = false;
};

uint64_t Increase(uint64_t before, uint64_t now) { return now > before ? now - before : 0; }

void LogSort(const SortJob& job, const Timing& timing, size_t rows) {
  if (!keepsAttrCacheFile) return;
  const uint64_t misses = Increase(timing.misses, AttrCounters().misses);
  const uint64_t hits = Increase(timing.hits, AttrCounters().hits);
  const char16_t* const type = misses == 0 ? u"warm" : timing.isTwoPhase ? u"cold-2phase" : u"cold";
  LogPerfMetric(FormatText(u"sort col=%d type=%ls total_ms=%llu hydrate_ms=%llu", job.column, type,
                           TickMs() - timing.startMs, timing.hydrateMs) +
                FormatText(u" misses=%llu hits=%llu rows=%zu", misses, hits, rows));
}

void Reverse(const SortJob& job, std::vector<MatchItem> rows, uint64_t start) {
  const size_t count = rows.size();
  std::reverse(rows.begin(), rows.end());
  if (!PublishSorted(job, std::move(rows), Order::kWhole)) return;
  LogPerfMetric(FormatText(u"sort col=%d type=reverse total_ms=%llu rows=%zu", job.column,
                           TickMs() - start, count));
}

// Shows what is known, fetches what is not. False if the job went stale.
bool FetchMissing(const SortJob& job, const std::vector<MatchItem>& rows, Timing& timing) {
  const auto missing = MissingRows(rows, job);
  if (!missing) return false;
  if (!missing->empty()) {
    const uint64_t start = TickMs();
    if (!PublishSorted(job, SortedByValue(rows, job), Order::kOfWhatIsKnown)) return false;
    Fetch(job, *missing, rows.size()).Run();
    timing.isTwoPhase = true;
    timing.hydrateMs = TickMs() - start;
  }
  return IsCurrent(job.generation);
}

}  // namespace

bool ShowsFetchProgress(size_t missing, size_t rows) {
  constexpr size_t kMany = 5'000, kLargeShare = 15;  // per cent
  return missing >= kMany || missing * 100 >= rows * kLargeShare;
}

void DoSortAsync(int column, Direction direction) {
  if (column == 0) return;
  SortJob job{.column = column};
  {
    const std::scoped_lock lock(ResultsLock);
    if (direction == Direction::kByClick) {
      const bool isSame = SortColumn == column;
      SortAscending = isSame ? !SortAscending : column != kColumnSize;
      // Turning around is only right for a set that stands the other way round by now.
      job.reverse = isSame && column != kColumnSize && HeldOrder == SetOrder{column, !SortAscending};
    }
    SortColumn = column;
    job.ascending = SortAscending;
    // Under the lock: no search publishes between the look at the held set and this.
    job.generation = ++searchGeneration;
  }
  RunBackground("do_sort", [job] { RunSort(job); });
}

void RunSort(const SortJob& job) {
  Timing timing;
  auto held = HeldResults();
  if (held->empty() || !IsCurrent(job.generation)) return;
  std::vector<MatchItem> rows = LiveRows(*held);
  held.reset();  // the disk may take minutes, and nobody else needs the former set
  if (job.reverse) return Reverse(job, std::move(rows), timing.startMs);
  const bool isByValue = NeedsAttributes(job.column);
  if (isByValue && !FetchMissing(job, rows, timing)) return;
  const size_t count = rows.size();
  std::vector<MatchItem> sorted = isByValue ? SortedByValue(rows, job) : SortedByText(rows, job);
  if (sorted.size() != count || !PublishSorted(job, std::move(sorted), Order::kWhole)) return;
  LogSort(job, timing, count);
  if (isByValue) SaveAttrCacheAfterSort(TickMs());
}

}  // namespace quilmark
