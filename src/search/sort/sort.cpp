#include "search/sort/sort.h"

#include <algorithm>
#include <thread>
#include <utility>

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

bool PublishSorted(const SortJob& job, ResultSet rows, SetOrder order) {
  return PublishResults(job.ticket, ResultKind::kSorted,
                        std::make_shared<const ResultSet>(std::move(rows)), KeepSort::kYes, order);
}

// Fetches attributes with several threads, since this waits for the disk, and tells how far it has come.
class Fetch {
 public:
  Fetch(RowRun missing, int column, const Ticket& ticket, std::function<void(size_t, size_t)> report)
      : missing_(missing), column_(column), ticket_(ticket), report_(std::move(report)) {}

  void Run() {
    const unsigned half = std::thread::hardware_concurrency() / 2;
    const size_t workers = std::clamp(half, kLeastWorkers, kMostWorkers);
    constexpr size_t kRowsAPiece = 64;
    OnThreads(workers, missing_.size(), kRowsAPiece,
              [this](size_t, size_t begin, size_t end) { FetchRows(begin, end); });
  }

 private:
  void FetchRows(size_t begin, size_t end) {
    const Insist insist = column_ == kColumnSize ? Insist::kNo : Insist::kOnDisk;
    for (size_t i = begin; i < end && ticket_.IsCurrent(); ++i) {
      AttrEntry entry;
      EnsureFileAttributes(missing_[i].volume, missing_[i].index, entry, insist);
      Report(++done_);
    }
  }

  void Report(size_t done) {
    if (!report_ || done % kProgressStep != 0) return;
    uint64_t last = lastReportMs_;
    const uint64_t now = TickMs();
    if (now - last < kProgressMs || !lastReportMs_.compare_exchange_strong(last, now)) return;
    report_(done, missing_.size());
  }

  const RowRun missing_;
  const int column_;
  const Ticket ticket_;
  const std::function<void(size_t, size_t)> report_;
  std::atomic<size_t> done_ = 0;
  std::atomic<uint64_t> lastReportMs_ = TickMs();
};

struct Timing {
  uint64_t startMs = TickMs();
  uint64_t hits = AttrCounters().hits, misses = AttrCounters().misses;
};

uint64_t Increase(uint64_t before, uint64_t now) { return now > before ? now - before : 0; }

void LogSort(const SortJob& job, const Timing& timing, const SortedSet& sorted, size_t rows) {
  const uint64_t misses = Increase(timing.misses, AttrCounters().misses);
  const uint64_t hits = Increase(timing.hits, AttrCounters().hits);
  const char16_t* const type = misses == 0 ? u"warm" : sorted.hasAskedDisk ? u"cold-2phase" : u"cold";
  LogPerfMetric(FormatText(u"sort col=%d type=%ls total_ms=%llu hydrate_ms=%llu", job.order.column, type,
                           TickMs() - timing.startMs, sorted.askedMs) +
                FormatText(u" misses=%llu hits=%llu rows=%zu", misses, hits, rows));
}

void Reverse(const SortJob& job, ResultSet rows, uint64_t start) {
  const size_t count = rows.size();
  std::reverse(rows.begin(), rows.end());
  if (!PublishSorted(job, std::move(rows), job.order)) return;
  LogPerfMetric(FormatText(u"sort col=%d type=reverse total_ms=%llu rows=%zu", job.order.column,
                           TickMs() - start, count));
}

// Shows what is known, fetches what is not. False if the ticket went stale, or whoever is shown ends it.
bool FetchMissing(RowRun rows, SetOrder order, const Ticket& ticket, const SortSteps& steps,
                  SortedSet& sorted) {
  const auto missing = MissingRows(rows, order.column, ticket);
  if (!missing) return false;
  if (missing->empty()) return ticket.IsCurrent();
  const uint64_t start = TickMs();
  if (steps.showKnown) {
    auto known = SortedByValue(rows, order, ticket);
    if (!known || !steps.showKnown(std::move(*known))) return false;
  }
  const bool reports = ShowsFetchProgress(missing->size(), rows.size());
  Fetch(*missing, order.column, ticket, reports ? steps.report : nullptr).Run();
  sorted.hasAskedDisk = true;
  sorted.askedMs = TickMs() - start;
  return ticket.IsCurrent();
}

void ReportFetch(const SortJob& job, size_t done, size_t total) {
  PostText(TheSearch().hooks.window, WM_SEARCH_STATUS, job.ticket.Number(),
           FormatText(TranslateOr(u"Status_HydrateProgressFmt",
                                  u"Extracting properties... (Processed %zu / %zu)"),
                      done, total));
}

}  // namespace

bool ShowsFetchProgress(size_t missing, size_t rows) {
  constexpr size_t kMany = 5'000, kLargeShare = 15;  // per cent
  return missing >= kMany || missing * 100 >= rows * kLargeShare;
}

std::optional<SortedSet> SortRows(std::shared_ptr<const ResultSet> rows, SetOrder order,
                                  const Ticket& ticket, const SortSteps& steps) {
  const ResultSet live = LiveRows(*rows);
  rows.reset();  // the disk may take minutes, and this job does not need the former set
  SortedSet sorted;
  const bool isByValue = NeedsAttributes(order.column);
  if (isByValue && !FetchMissing(live, order, ticket, steps, sorted)) return std::nullopt;
  auto done = isByValue ? SortedByValue(live, order, ticket) : SortedByText(live, order, ticket);
  if (!done) return std::nullopt;
  sorted.rows = std::move(*done);
  return sorted;
}

void DoSortAsync(int column, Direction direction) {
  if (column == 0) return;
  SortJob job;
  // In one hold of the lock: no search publishes between the look at the held set and this.
  job.ticket = TheSearch().CurrentResults.Supersede([&](SearchResults& held) {
    if (direction == Direction::kByClick) {
      const bool isSame = held.SortColumn == column;
      held.SortAscending = isSame ? !held.SortAscending : column != kColumnSize;
      // Turning around is only right for a set that stands the other way round by now.
      job.reverse =
          isSame && column != kColumnSize && held.order == SetOrder{column, !held.SortAscending};
    }
    held.SortColumn = column;
    job.order = {column, held.SortAscending};
    job.rows = held.rows;
  });
  RunBackground("do_sort", [job = std::move(job)]() mutable { RunSort(std::move(job)); });
}

void RunSort(SortJob job) {
  const Timing timing;
  if (job.rows->empty() || !job.ticket.IsCurrent()) return;
  if (job.reverse) {
    ResultSet live = LiveRows(*job.rows);
    return Reverse(job, std::move(live), timing.startMs);
  }
  const SortSteps steps{
      .showKnown = [&job](ResultSet known) { return PublishSorted(job, std::move(known), {}); },
      .report = [&job](size_t done, size_t total) { ReportFetch(job, done, total); }};
  auto sorted = SortRows(std::exchange(job.rows, nullptr), job.order, job.ticket, steps);
  if (!sorted) return;
  const size_t count = sorted->rows.size();
  if (!PublishSorted(job, std::exchange(sorted->rows, {}), job.order)) return;
  LogSort(job, timing, *sorted, count);
  if (NeedsAttributes(job.order.column)) SaveAttrCacheAfterSort(TickMs());
}

}  // namespace quilmark
