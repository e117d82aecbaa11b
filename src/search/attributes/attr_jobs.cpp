#include "search/attributes/attr_jobs.h"

#include <algorithm>
#include <optional>
#include <shared_mutex>
#include <vector>

#include "platform/background.h"
#include "platform/clock.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_cache_file.h"
#include "search/attributes/folder_sizes.h"
#include "search/results/glance.h"

namespace quilmark {

namespace {

constexpr uint32_t kPrewarmRecords = 3'000, kPrewarmPause = 128;
constexpr uint64_t kSaveGapMs = 3'000;

struct Hydration {
  std::shared_ptr<const ResultSet> rows;
  RowRange range;
  Ticket search;  // the rows are those of a search that is still current
  Ticket ticket;

  bool IsCurrent() const { return ticket.IsCurrent() && search.IsCurrent(); }
};

void PostChanged(uint64_t generation, int64_t what) {
  PostIfAlive(TheSearch().hooks.window, WM_ATTRS_UPDATED, generation, what);
}

// True if the row has more than before.
bool HydrateRow(const MatchItem& hit, std::vector<VolumeIndex*>& dirty) {
  // A build holds the lock for as long as it takes, and other volumes wait for this job.
  if (hit.volume == nullptr || !IsSearchable(*hit.volume)) return false;
  const auto kind = KindOfLocked(*hit.volume, hit.index);
  if (!kind || kind->isDeleted) return false;
  const bool isListed = std::find(dirty.begin(), dirty.end(), hit.volume) != dirty.end();
  if (kind->isDirectory && hit.volume->folderSizesDirty && !isListed) dirty.push_back(hit.volume);
  const auto held = LookupAttr(*hit.volume, kind->frn);
  if (held && (held->modified != 0 || held->created != 0)) return false;
  const AttrEntry before = held.value_or(AttrEntry());
  AttrEntry scratch = before;
  EnsureFileAttributes(hit.volume, hit.index, scratch, Insist::kOnDisk);
  // A full cache takes nothing, and of a file that cannot be read nothing is new: to paint again would
  // only ask again.
  const auto after = PeekAttr(*hit.volume, kind->frn);
  return after && !IsSameAttr(before, *after);
}

void Hydrate(const Hydration& job) {
  bool isChanged = false;
  std::vector<VolumeIndex*> dirty;
  for (uint64_t row = job.range.first; row < job.range.end; ++row) {
    if (!job.IsCurrent()) return;
    isChanged = HydrateRow((*job.rows)[row], dirty) || isChanged;
  }
  for (VolumeIndex* const volume : dirty) {
    if (!job.IsCurrent()) return;
    if (!volume->folderSizesDirty) continue;
    RebuildFolderSizes(*volume);
    isChanged = true;
  }
  if (isChanged && job.IsCurrent()) PostChanged(job.ticket.Number(), 0);
}

bool HasNoAttributes(const VolumeIndex& volume) {
  const std::shared_lock lock(volume.attrLock);
  return volume.attrs.empty();
}

void PrewarmVolume(VolumeIndex& volume) {
  uint32_t count = 0;
  {
    const std::shared_lock lock(volume.indexLock);
    count = std::min(volume.records.size(), kPrewarmRecords);
  }
  for (uint32_t index = 0; index < count && !ShutdownRequested; ++index) {
    AttrEntry scratch;
    EnsureFileAttributes(&volume, index, scratch, Insist::kOnDisk);
    if (index % kPrewarmPause == 0) SleepMs(1);
  }
}

void PrewarmVolumes(SearchEngine& engine) {
  // All of them first: a row that is shown meanwhile does not keep its volume cold.
  std::vector<VolumeIndex*> volumes = CopyVolumes(engine);
  std::erase_if(volumes,
                [](const VolumeIndex* volume) { return !volume->valid || !HasNoAttributes(*volume); });
  for (VolumeIndex* const volume : volumes) {
    if (!ShutdownRequested) PrewarmVolume(*volume);
  }
}

void SaveInJob(SearchEngine& engine, const char* name) {
  TheAttrCacheFile().saveJob.Start(name, [&engine] { SaveAttrCache(engine); });
}

}  // namespace

void TellAttributesChanged() { PostChanged(TheSearch().hydrationGeneration.Number(), 0); }

void TellSomeAreStale() { PostChanged(TheSearch().hydrationGeneration.Number(), kSomeAreStale); }

bool ShowsStale(const ResultSet& rows, RowRange range) {
  for (uint64_t row = range.first; row < std::min<uint64_t>(range.end, rows.size()); ++row) {
    const MatchItem& hit = rows[row];
    if (hit.volume == nullptr) continue;
    std::optional<RecordKind> kind;
    {
      const auto lock = LockForGlance(*hit.volume);
      if (!lock) return true;
      kind = KindOf(*hit.volume, hit.index);
    }
    if (!kind) continue;
    const auto glance = GlanceAtAttr(*hit.volume, kind->frn);
    if (!glance || glance->entry.stale) return true;
  }
  return false;
}

void HydrateRowsAsync(std::shared_ptr<const ResultSet> rows, RowRange range) {
  range.end = std::min<uint64_t>(range.end, rows->size());
  if (range.first >= range.end || ShutdownRequested) return;
  const auto prepare = [&] {
    SearchSession& session = TheSearch();
    const Hydration job{.rows = std::move(rows),
                        .range = range,
                        .search = session.CurrentResults.Latest(),
                        .ticket = session.hydrationGeneration.Supersede()};
    return [job] { Hydrate(job); };
  };
  // Whoever is refused meanwhile asks anew when the list is painted.
  TheSearch().hydration.StartWith("attr_hydration", prepare, TellAttributesChanged);
}

void PrewarmAttrCacheAsync(SearchEngine& engine) {
  engine.prewarming.Start("prewarm_attr_cache", [&engine] { PrewarmVolumes(engine); });
}

void AutosaveAttrCacheAsync(SearchEngine& engine) {
  if (ShutdownRequested || AttrCacheGeneration <= TheAttrCacheFile().AttrSavedGeneration) return;
  SaveInJob(engine, "cache_autosave");
}

void SaveAttrCacheAfterSort(uint64_t nowMs) {
  std::atomic<uint64_t>& lastMs = TheAttrCacheFile().afterSortMs;
  uint64_t last = lastMs;
  if (nowMs - last <= kSaveGapMs || !lastMs.compare_exchange_strong(last, nowMs)) return;
  SaveInJob(Engine(), "sort_attr_cache_save");
}

}  // namespace quilmark
