#include "search/results/search_pipeline.h"

#include <algorithm>
#include <bit>
#include <mutex>
#include <shared_mutex>
#include <utility>

#include "platform/background.h"
#include "search/results/folder_query.h"
#include "search/scan/name_scan.h"

namespace quilmark {

namespace {

// A name search on its way through the volumes.
struct Collector {
  const SearchJob& job;
  const SearchScope& scope;
  std::shared_ptr<ResultSet> results;
  bool partialPublished = false;
  std::u16string path;  // reused by the Desktop test
};

std::shared_ptr<ResultSet> MakeResultSet() {
  auto results = std::make_shared<ResultSet>();
  results->reserve(kResultRoom);
  return results;
}

// Room for one more granule. A set that must grow grows to what the `hits` among the `scanned` records
// of the volume promise for those `ahead`: one move instead of one at each doubling. A few records
// promise nothing.
void MakeRoom(ResultSet& results, uint64_t hits, uint64_t scanned, uint64_t ahead) {
  if (results.capacity() - results.size() >= kGranule) return;
  constexpr uint64_t kTelling = 65'536;
  const uint64_t promised = scanned < kTelling ? 0 : results.size() + hits * ahead / scanned * 9 / 8;
  results.reserve(std::max<uint64_t>(results.size() * 3 / 2, promised) + kGranule);
}

void AppendHits(VolumeIndex& volume, uint32_t firstIndex, uint64_t bits, Collector& collector) {
  for (; bits != 0; bits &= bits - 1) {
    const uint32_t index = firstIndex + static_cast<uint32_t>(std::countr_zero(bits));
    if (collector.scope.desktopOnly) {
      BuildPathInto(volume, index, collector.path);
      if (!PathInDesktop(collector.path, *collector.scope.desktop)) continue;
    }
    collector.results->push_back({&volume, index});
  }
}

// Once a search: the first page, while the scan goes on.
void PublishFirstPage(Collector& collector) {
  if (collector.partialPublished || collector.results->size() < kPartialResults) return;
  collector.partialPublished =
      PublishResults(collector.job.generation, ResultKind::kPartial,
                     std::make_shared<const ResultSet>(*collector.results), collector.job.keepScroll);
}

enum class FirstPage { kPublish, kLeaveOut };

// False if the search went stale on the way.
bool ScanVolume(VolumeIndex& volume, const CompiledQuery& query, FirstPage firstPage,
                Collector& collector) {
  NameScan scan{.volume = volume, .query = query};
  const auto isWanted = [&] { return IsCurrent(collector.job.generation); };
  if (!ScanApart(scan, isWanted)) return false;
  const uint32_t count = volume.records.size();
  const uint32_t granules = GranuleCount(count);
  const size_t hitsBefore = collector.results->size();
  for (uint32_t granule = NextGranule(scan, 0); granule < granules;
       granule = NextGranule(scan, granule + 1)) {
    if (!isWanted()) return false;
    const uint64_t scanned = uint64_t{granule} * kGranule;
    MakeRoom(*collector.results, collector.results->size() - hitsBefore, scanned, count - scanned);
    const GranuleHits hits = ScanGranule(scan, granule);
    for (uint32_t word = 0; word < hits.size(); ++word) {
      AppendHits(volume, granule * kGranule + word * 64, hits[word], collector);
    }
    if (firstPage == FirstPage::kPublish) PublishFirstPage(collector);
  }
  return true;
}

// False where a writer holds it: typing never waits, and the next key asks again.
bool TakeShared(std::shared_lock<OrderedLock>& lock) {
  if (!searchHooks.waitsForWriters) return lock.try_lock();
  lock.lock();
  return true;
}

// Volume after volume; one whose lock is not to be had is left out. False if gone stale.
bool ScanVolumes(const std::vector<VolumeIndex*>& volumes, const CompiledQuery& query,
                 FirstPage firstPage, Collector& collector) {
  for (VolumeIndex* const volume : volumes) {
    if (!IsCurrent(collector.job.generation)) return false;
    if (!IsSearchable(*volume)) continue;
    std::shared_lock lock(volume->indexLock, std::defer_lock);
    if (TakeShared(lock) && !ScanVolume(*volume, query, firstPage, collector)) return false;
  }
  return true;
}

void PublishFinal(const SearchJob& job, std::shared_ptr<const ResultSet> results) {
  PublishResults(job.generation, ResultKind::kFinal, std::move(results), job.keepScroll);
}

void RunContentSearch(const SearchJob& job, const ContentQuery& query, const SearchScope& scope) {
  std::shared_ptr<ResultSet> results;
  if (searchHooks.searchContent) results = searchHooks.searchContent(job, query, scope);
  PublishFinal(job, results != nullptr ? std::move(results) : MakeResultSet());
}

// All volumes are listed, whatever drive the scope names: only the one that holds the folder can give a
// hit.
void RunFolderQuery(const SearchJob& job, const std::u16string& folder, const SearchScope& scope) {
  auto results = MakeResultSet();
  if (!scope.desktopOnly || PathInDesktop(folder, *scope.desktop)) {
    for (VolumeIndex* const volume : CopyVolumes(Engine())) {
      if (IsSearchable(*volume)) ListFolderFromIndex(*volume, folder, *results);
    }
  }
  PublishFinal(job, std::move(results));
}

void RunNameSearch(const SearchJob& job, const std::vector<VolumeIndex*>& volumes,
                   const SearchScope& scope) {
  const CompiledQuery query =
      CompileQuery(PrepareNameGroups(ParseQueryGroups(job.text)), initialSearchEnabled);
  Collector collector{.job = job, .scope = scope, .results = MakeResultSet(), .path = {}};
  if (ScanVolumes(VolumesInScope(volumes, scope), query, FirstPage::kPublish, collector)) {
    PublishFinal(job, std::move(collector.results));
  }
}

void RunRecentResults(const SearchJob& job) {
  std::shared_ptr<ResultSet> results;
  if (searchHooks.recentResults) results = searchHooks.recentResults();
  PublishFinal(job, results != nullptr ? std::move(results) : MakeResultSet());
}

void RetryWhenReady(std::u16string text) {
  CurrentQueryText = std::move(text);
  if (searchHooks.showStatus) {
    searchHooks.showStatus(u"Status_IndexNotReadyRetry",
                           u"Index is still initializing. Retrying search shortly...");
  }
  if (searchHooks.restartTimer) searchHooks.restartTimer(TIMER_SEARCH_DEBOUNCE, kNotReadyRetryMs);
}

// What the list showed when a rebuild of the whole set began.
struct HeldSort {
  int column = -1;
  bool ascending = true;
};

HeldSort CurrentSort() {
  const std::scoped_lock lock(ResultsLock);
  return {SortColumn, SortAscending};
}

// Publishes with the sort of the former set, and asks for the columns whose order the index does not
// know.
void PublishRebuilt(const SearchJob& job, std::shared_ptr<const ResultSet> results, HeldSort sort) {
  {
    const std::scoped_lock lock(ResultsLock);
    if (!IsCurrent(job.generation)) return;
    CurrentResults.swap(results);
    HeldOrder = {};
    SortColumn = sort.column;
    SortAscending = sort.ascending;
  }
  PostIfAlive(searchHooks.window, WM_SEARCH_RESULTS, job.generation,
              static_cast<int64_t>(ResultKind::kFinal));
}

// Every record in scope.
void RebuildWholeSet(const SearchJob& job, const SearchScope& scope, HeldSort sort) {
  const bool hasPlace = !scope.desktopOnly || scope.desktop.has_value();
  Collector collector{.job = job, .scope = scope, .results = MakeResultSet(), .path = {}};
  if (hasPlace) {
    const auto volumes = VolumesInScope(CopyVolumes(Engine()), scope);
    if (!ScanVolumes(volumes, CompileQuery({}, false), FirstPage::kLeaveOut, collector)) return;
  }
  PublishRebuilt(job, std::move(collector.results), sort);
  const bool needsAttributes = sort.column >= 2 && sort.column <= 4;
  if (hasPlace && needsAttributes && IsCurrent(job.generation)) {
    PostIfAlive(searchHooks.window, WM_RESORT_RESULTS, static_cast<uint64_t>(sort.column),
                sort.ascending);
  }
}

}  // namespace

void RunSearch(const SearchJob& job) {
  if (!Engine().ready || ShutdownRequested) return;
  if (!job.text.empty()) SuppressRecentView = false;
  const std::vector<VolumeIndex*> volumes = CopyVolumes(Engine());
  const ContentQuery content = ParseContentQuery(
      job.text, searchHooks.contentExts ? searchHooks.contentExts() : std::vector<std::u16string>());

  const SearchScope scope = CurrentScope();
  if (scope.desktopOnly && !scope.desktop) return PublishFinal(job, MakeResultSet());
  if (content.Active) return RunContentSearch(job, content, scope);
  std::u16string folder;
  if (IsExistingFolderQuery(job.text, folder)) return RunFolderQuery(job, folder, scope);
  RunNameSearch(job, volumes, scope);
}

void DoSearchAsync(std::u16string text, bool keepScroll, bool recentView) {
  SearchJob job{.generation = ++searchGeneration, .text = std::move(text), .keepScroll = keepScroll};
  TrimQuery(job.text);
  if (job.text.empty() && scopeIndex == kScopeDesktop) return RefreshSearchResultsAfterIndexUpdate();
  if (!job.text.empty() && !recentView) {
    if (!Engine().ready) return RetryWhenReady(std::move(job.text));
    RunBackground("do_search", [job = std::move(job)] { RunSearch(job); });
    return;
  }
  if (SuppressRecentView) return;
  RunBackground("search_recent_results", [job = std::move(job)] { RunRecentResults(job); });
}

void RefreshSearchResultsAfterIndexUpdate() {
  SuppressRecentView = true;
  std::u16string text = searchHooks.readSearchBox ? searchHooks.readSearchBox() : std::u16string();
  TrimQuery(text);
  if (!text.empty()) return DoSearchAsync(std::move(text), false, false);
  SearchJob job{.generation = ++searchGeneration};
  RunBackground("refresh_results_after_volume_removal",
                [job = std::move(job), scope = CurrentScope(), sort = CurrentSort()] {
                  RebuildWholeSet(job, scope, sort);
                });
}

}  // namespace quilmark
