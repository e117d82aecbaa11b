#include "search/results/search_pipeline.h"

#include <algorithm>
#include <bit>
#include <mutex>
#include <shared_mutex>
#include <utility>

#include "platform/background.h"
#include "search/results/folder_query.h"
#include "search/results/glance.h"
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

KeepSort SortOf(const SearchJob& job) { return job.keepScroll ? KeepSort::kYes : KeepSort::kNo; }

// Once a search: the first page, while the scan goes on.
void PublishFirstPage(Collector& collector) {
  if (collector.partialPublished || collector.results->size() < kPartialResults) return;
  collector.partialPublished =
      PublishResults(collector.job.ticket, ResultKind::kPartial,
                     std::make_shared<const ResultSet>(*collector.results), SortOf(collector.job));
}

enum class FirstPage { kPublish, kLeaveOut };

// False if the search went stale on the way.
bool ScanVolume(VolumeIndex& volume, const CompiledQuery& query, FirstPage firstPage,
                Collector& collector) {
  NameScan scan{.volume = volume, .query = query};
  const auto isWanted = [&] { return collector.job.ticket.IsCurrent(); };
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
bool TakeShared(std::shared_lock<OrderedLock>& lock, const SearchOptions& options) {
  if (!options.waitsForWriters) return lock.try_lock();
  lock.lock();
  return true;
}

// Volume after volume; one whose lock is not to be had is left out. False if gone stale.
bool ScanVolumes(const std::vector<VolumeIndex*>& volumes, const CompiledQuery& query,
                 FirstPage firstPage, Collector& collector) {
  for (VolumeIndex* const volume : volumes) {
    if (!collector.job.ticket.IsCurrent()) return false;
    if (!IsSearchable(*volume)) continue;
    std::shared_lock lock(volume->indexLock, std::defer_lock);
    if (TakeShared(lock, collector.job.options) && !ScanVolume(*volume, query, firstPage, collector))
      return false;
  }
  return true;
}

void PublishFinal(const SearchJob& job, std::shared_ptr<const ResultSet> results) {
  PublishResults(job.ticket, ResultKind::kFinal, std::move(results), SortOf(job));
}

void RunContentSearch(const SearchJob& job, const ContentQuery& query, const SearchScope& scope) {
  std::shared_ptr<ResultSet> results;
  if (TheSearch().hooks.searchContent) results = TheSearch().hooks.searchContent(job, query, scope);
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
      CompileQuery(PrepareNameGroups(ParseQueryGroups(job.text)), job.options.initials);
  Collector collector{.job = job, .scope = scope, .results = MakeResultSet(), .path = {}};
  if (ScanVolumes(VolumesInScope(volumes, scope), query, FirstPage::kPublish, collector)) {
    PublishFinal(job, std::move(collector.results));
  }
}

void RunRecentResults(const SearchJob& job) {
  std::shared_ptr<ResultSet> results;
  if (TheSearch().hooks.recentResults) results = TheSearch().hooks.recentResults();
  PublishFinal(job, results != nullptr ? std::move(results) : MakeResultSet());
}

void RetryWhenReady(std::u16string text) {
  TheSearch().CurrentQueryText = std::move(text);
  if (TheSearch().hooks.showStatus) {
    TheSearch().hooks.showStatus(u"Status_IndexNotReadyRetry",
                                 u"Index is still initializing. Retrying search shortly...");
  }
  if (TheSearch().hooks.restartTimer)
    TheSearch().hooks.restartTimer(TIMER_SEARCH_DEBOUNCE, kNotReadyRetryMs);
}

void PublishRebuilt(const SearchJob& job, std::shared_ptr<const ResultSet> results, ChosenSort sort) {
  SearchResults rebuilt{.rows = std::move(results),
                        .order = {},
                        .SortColumn = sort.column,
                        .SortAscending = sort.ascending};
  const bool isPublished = TheSearch().CurrentResults.Publish(job.ticket, std::move(rebuilt));
  if (isPublished) PostResults(job.ticket, ResultKind::kFinal);
}

// Every record in scope.
void RebuildWholeSet(const SearchJob& job, ChosenSort sort) {
  const SearchScope scope = ResolveScope(job.scope);
  const bool hasPlace = !scope.desktopOnly || scope.desktop.has_value();
  Collector collector{.job = job, .scope = scope, .results = MakeResultSet(), .path = {}};
  if (hasPlace) {
    const auto volumes = VolumesInScope(CopyVolumes(Engine()), scope);
    if (!ScanVolumes(volumes, CompileQuery({}, false), FirstPage::kLeaveOut, collector)) return;
  }
  PublishRebuilt(job, std::move(collector.results), sort);
  const bool needsAttributes = sort.column >= 2 && sort.column <= 4;
  if (hasPlace && needsAttributes && job.ticket.IsCurrent()) {
    PostIfAlive(TheSearch().hooks.window, WM_RESORT_RESULTS, static_cast<uint64_t>(sort.column),
                sort.ascending);
  }
}

// What a search that begins now is started with, but for its text.
SearchJob BeginSearch() {
  const SearchSession& session = TheSearch();
  return {.ticket = SupersedeSearch(), .text = {}, .scope = session.scope, .options = session.options};
}

}  // namespace

void RunSearch(const SearchJob& job) {
  if (!Engine().ready || ShutdownRequested) return;
  if (!job.text.empty()) TheSearch().SuppressRecentView = false;
  const std::vector<VolumeIndex*> volumes = CopyVolumes(Engine());
  const ContentQuery content =
      ParseContentQuery(job.text, TheSearch().hooks.contentExts ? TheSearch().hooks.contentExts()
                                                                : std::vector<std::u16string>());

  const SearchScope scope = ResolveScope(job.scope);
  if (scope.desktopOnly && !scope.desktop) return PublishFinal(job, MakeResultSet());
  if (content.Active) return RunContentSearch(job, content, scope);
  if (const auto folder = IsExistingFolderQuery(job.text)) return RunFolderQuery(job, *folder, scope);
  RunNameSearch(job, volumes, scope);
}

void DoSearchAsync(std::u16string text, bool keepScroll, bool recentView) {
  SearchJob job = BeginSearch();
  job.text = std::move(text);
  job.keepScroll = keepScroll;
  TrimQuery(job.text);
  if (job.text.empty() && job.scope.scopeIndex == kScopeDesktop) {
    return RefreshSearchResultsAfterIndexUpdate();
  }
  if (!job.text.empty() && !recentView) {
    if (!Engine().ready) return RetryWhenReady(std::move(job.text));
    if (TheSearch().hooks.whenSearchBegins) TheSearch().hooks.whenSearchBegins(job.text);
    RunBackground("do_search", [job = std::move(job)] { RunSearch(job); });
    return;
  }
  if (TheSearch().SuppressRecentView) return;
  RunBackground("search_recent_results", [job = std::move(job)] { RunRecentResults(job); });
}

void RefreshSearchResultsAfterIndexUpdate() {
  SearchSession& session = TheSearch();
  session.SuppressRecentView = true;
  std::u16string text = session.hooks.readSearchBox ? session.hooks.readSearchBox() : std::u16string();
  TrimQuery(text);
  if (!text.empty()) return DoSearchAsync(std::move(text), false, false);
  RunBackground("refresh_results_after_volume_removal",
                [job = BeginSearch(), sort = CurrentSort()] { RebuildWholeSet(job, sort); });
}

}  // namespace quilmark
