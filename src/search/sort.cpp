#include "search/sort.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <thread>

#include "config/attr_counters.h"
#include "config/log.h"
#include "config/translate.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/format.h"
#include "search/attr_cache.h"
#include "search/attr_cache_file.h"
#include "search/attr_jobs.h"
#include "search/folder_sizes.h"

namespace quilmark {

namespace {

constexpr size_t kProgressRows = 5'000, kProgressPercent = 15, kProgressStep = 800;
constexpr uint64_t kProgressMs = 151, kSaveGapMs = 3'000;
constexpr unsigned kLeastWorkers = 2, kMostWorkers = 6;

std::atomic<uint64_t> lastSaveMs = 0;

bool NeedsAttributes(int column) { return column >= kColumnSize && column <= kColumnCreated; }

FileTime DateOf(const AttrEntry& entry, int column) {
  return column == kColumnModified ? entry.modified : entry.created;
}
FileTime DateOf(const SortRow& row, int column) {
  return column == kColumnModified ? row.modified : row.created;
}

// What the index says of a row.
struct RowKind {
  uint64_t frn = 0;
  bool isDirectory = false;
};
std::optional<RowKind> KindOf(const MatchItem& item) {
  const std::shared_lock lock(item.volume->indexLock);
  if (item.index >= item.volume->records.size()) return std::nullopt;
  const FileRecord& record = item.volume->records[item.index];
  if (record.deleted) return std::nullopt;
  return RowKind{record.frn, record.isDirectory != 0};
}

// The held rows without those that are gone.
std::vector<MatchItem> LiveRows(const ResultSet& held) {
  std::vector<MatchItem> rows;
  rows.reserve(held.size());
  for (const MatchItem& item : held) {
    if (KindOf(item)) rows.push_back(item);
  }
  return rows;
}

enum class Order { kWhole, kOfWhatIsKnown };

bool PublishSorted(const SortJob& job, std::vector<MatchItem> rows, Order order) {
  return PublishResults(job.generation, ResultKind::kSorted,
                        std::make_shared<const ResultSet>(std::move(rows)), true,
                        order == Order::kWhole ? job.column : -1);
}

std::vector<VolumeIndex*> VolumesOf(const std::vector<MatchItem>& rows) {
  std::vector<VolumeIndex*> volumes;
  for (const MatchItem& row : rows) {
    if (!volumes.empty() && volumes.back() == row.volume) continue;
    if (std::find(volumes.begin(), volumes.end(), row.volume) == volumes.end())
      volumes.push_back(row.volume);
  }
  return volumes;
}

bool IsMissing(const MatchItem& row, int column) {
  const auto kind = KindOf(row);
  if (!kind || (column == kColumnSize && kind->isDirectory)) return false;
  AttrEntry entry;
  const bool isHeld = LookupAttr(*row.volume, kind->frn, entry);
  if (column != kColumnSize) return !isHeld || DateOf(entry, column) == 0;
  MftSize size;
  return !isHeld && !LookupMftSize(*row.volume, kind->frn, size);
}

// Empty if the job went stale.
std::optional<std::vector<MatchItem>> MissingRows(const std::vector<MatchItem>& rows,
                                                  const SortJob& job) {
  std::vector<MatchItem> missing;
  missing.reserve(rows.size() / 8 + 1024);
  for (const MatchItem& row : rows) {
    if (!IsCurrent(job.generation)) return std::nullopt;
    if (IsMissing(row, job.column)) missing.push_back(row);
  }
  return missing;
}

SortRow SortRowOf(const MatchItem& item, int column) {
  SortRow row{.volume = item.volume, .index = item.index};
  const auto kind = KindOf(item);
  const uint64_t frn = kind ? kind->frn : 0;
  row.isDirectory = kind && kind->isDirectory;
  if (row.isDirectory) {
    uint64_t size = 0;
    row.hasValue = GetFolderSize(*item.volume, frn, size, IfDirty::kRebuild);
    row.size = static_cast<int64_t>(size);
    return row;
  }
  AttrEntry entry;
  const bool isHeld = PeekAttr(*item.volume, frn, entry);
  if (isHeld) {
    row.size = entry.size;
    row.modified = entry.modified;
    row.created = entry.created;
  }
  row.hasValue = isHeld;
  if (column != kColumnSize) {
    row.hasValue = isHeld && DateOf(entry, column) != 0;
    return row;
  }
  MftSize size;
  if ((!isHeld || entry.size == 0) && LookupMftSize(*item.volume, frn, size)) {
    if (!isHeld || size.logical > 0) row.size = static_cast<int64_t>(size.logical);
    row.hasValue = true;
  }
  return row;
}

std::vector<MatchItem> SortedByValue(const std::vector<MatchItem>& items, const SortJob& job) {
  std::vector<SortRow> rows;
  rows.reserve(items.size());
  for (const MatchItem& item : items) rows.push_back(SortRowOf(item, job.column));
  std::sort(rows.begin(), rows.end(), [&job](const SortRow& a, const SortRow& b) {
    return StandsBefore(a, b, job.column, job.ascending);
  });
  std::vector<MatchItem> sorted;
  sorted.reserve(rows.size());
  for (const SortRow& row : rows) sorted.push_back({row.volume, row.index});
  return sorted;
}

// Fetches attributes with several threads, since this waits for the disk, and tells how far it has come.
class Fetch {
 public:
  Fetch(const SortJob& job, const std::vector<MatchItem>& missing, size_t rows)
      : job_(job),
        missing_(missing),
        showsProgress_(missing.size() >= kProgressRows ||
                       missing.size() * 100 >= rows * kProgressPercent) {}

  void Run() {
    const unsigned half = std::thread::hardware_concurrency() / 2;
    const size_t workers = std::clamp(half, kLeastWorkers, kMostWorkers);
    const size_t chunk = (missing_.size() + workers - 1) / workers;
    std::vector<std::thread> threads;
    for (size_t begin = 0; begin < missing_.size(); begin += chunk) {
      const size_t end = std::min(begin + chunk, missing_.size());
      threads.emplace_back([this, begin, end] { FetchRows(begin, end); });
    }
    for (std::thread& thread : threads) thread.join();
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

void RefreshFolderTotals(const std::vector<MatchItem>& rows) {
  for (VolumeIndex* const volume : VolumesOf(rows)) {
    if (volume->folderSizesDirty) RebuildFolderSizes(*volume);
  }
}

struct Timing {
  uint64_t startMs = TickMs(), hydrateMs = 0;
  uint64_t hits = AttrCounters().hits, misses = AttrCounters().misses;
  bool isTwoPhase = false;
};

uint64_t Increase(uint64_t before, uint64_t now) { return now > before ? now - before : 0; }

void LogSort(const SortJob& job, const Timing& timing, size_t rows) {
  const uint64_t misses = Increase(timing.misses, AttrCounters().misses);
  const uint64_t hits = Increase(timing.hits, AttrCounters().hits);
  const char16_t* const type = misses == 0 ? u"warm" : timing.isTwoPhase ? u"cold-2phase" : u"cold";
  LogPerfMetric(FormatText(u"sort col=%d type=%ls total_ms=%llu hydrate_ms=%llu", job.column, type,
                           TickMs() - timing.startMs, timing.hydrateMs) +
                FormatText(u" misses=%llu hits=%llu rows=%zu", misses, hits, rows));
}

void SaveAfterSort() {
  uint64_t last = lastSaveMs;
  const uint64_t now = TickMs();
  if (now - last <= kSaveGapMs || !lastSaveMs.compare_exchange_strong(last, now)) return;
  SaveAttrCacheAfterSort();
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
  if (job.column == kColumnSize) RefreshFolderTotals(rows);
  const auto missing = MissingRows(rows, job);
  if (!missing) return false;
  if (!missing->empty()) {
    const uint64_t start = TickMs();
    if (!PublishSorted(job, SortedByValue(rows, job), Order::kOfWhatIsKnown)) return false;
    Fetch(job, *missing, rows.size()).Run();
    timing.isTwoPhase = true;
    timing.hydrateMs = TickMs() - start;
    if (!IsCurrent(job.generation)) return false;
    if (job.column == kColumnSize) {
      for (VolumeIndex* const volume : VolumesOf(*missing)) RebuildFolderSizes(*volume);
    }
  }
  return IsCurrent(job.generation);
}

}  // namespace

bool StandsBefore(const SortRow& a, const SortRow& b, int column, bool ascending) {
  const bool isByDate = column != kColumnSize;
  if (isByDate && a.isDirectory != b.isDirectory) return a.isDirectory == ascending;
  if (a.hasValue != b.hasValue) return a.hasValue;
  if (!isByDate) {
    const bool isEmptyA = a.size <= 0, isEmptyB = b.size <= 0;
    if (isEmptyA != isEmptyB) return isEmptyA == ascending;
    if (a.size != b.size) return (a.size < b.size) == ascending;
  } else if (DateOf(a, column) != DateOf(b, column)) {
    return (DateOf(a, column) < DateOf(b, column)) == ascending;
  }
  if (a.volume != b.volume) return std::less<>()(a.volume, b.volume);
  return a.index < b.index;
}

void DoSortAsync(int column, Direction direction) {
  if (column == 0) return;
  SortJob job{.column = column};
  {
    const std::scoped_lock lock(ResultsLock);
    if (direction == Direction::kByClick) {
      const bool isSame = SortColumn == column;
      SortAscending = isSame ? !SortAscending : column != kColumnSize;
      // Turning around is only right for a set that stands in the column's order by now.
      job.reverse = isSame && column != kColumnSize && HeldOrder == column;
    }
    SortColumn = column;
    job.ascending = SortAscending;
  }
  job.generation = ++searchGeneration;
  RunBackground("do_sort", [job] { RunSort(job); });
}

void RunSort(const SortJob& job) {
  Timing timing;
  const auto held = HeldResults();
  if (held->empty() || !IsCurrent(job.generation)) return;
  std::vector<MatchItem> rows = LiveRows(*held);
  if (job.reverse) return Reverse(job, std::move(rows), timing.startMs);
  const bool isByValue = NeedsAttributes(job.column);
  if (isByValue && !FetchMissing(job, rows, timing)) return;
  const size_t count = rows.size();
  std::vector<MatchItem> sorted = isByValue ? SortedByValue(rows, job) : SortedByText(rows, job);
  if (sorted.size() != count || !PublishSorted(job, std::move(sorted), Order::kWhole)) return;
  LogSort(job, timing, count);
  if (isByValue) SaveAfterSort();
}

}  // namespace quilmark
