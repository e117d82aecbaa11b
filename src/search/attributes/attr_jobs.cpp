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

namespace quilmark {

std::atomic<uint64_t> hydrationGeneration = 0;
std::atomic<bool> keepsAttrCacheFile = true;

namespace {

constexpr uint32_t kPrewarmRecords = 3'000, kPrewarmPause = 128;
constexpr uint64_t kSaveGapMs = 3'000;

std::atomic<bool> hydrationRuns = false;
std::atomic<bool> isAskedMeanwhile = false;  // while one ran
std::atomic<bool> saveRuns = false;

// Clears a flag however its job ends.
struct FlagMark {
  std::atomic<bool>& flag;
  ~FlagMark() { flag = false; }
};

// Ends a hydration's turn however its job ends. Whoever was refused meanwhile asks anew when the list is
// painted.
struct HydrationTurn {
  ~HydrationTurn() {
    hydrationRuns = false;
    if (isAskedMeanwhile.exchange(false)) TellAttributesChanged();
  }
};

struct Hydration {
  std::shared_ptr<const ResultSet> rows;
  RowRange range;
  uint64_t token = 0, search = 0;

  bool IsCurrentStill() const { return hydrationGeneration == token && IsCurrent(search); }
};

// True if the row has more than before.
bool HydrateRow(const MatchItem& hit, std::vector<VolumeIndex*>& dirty) {
  if (hit.volume == nullptr) return false;
  const auto kind = KindOfLocked(*hit.volume, hit.index);
  if (!kind || kind->isDeleted) return false;
  const bool isListed = std::find(dirty.begin(), dirty.end(), hit.volume) != dirty.end();
  if (kind->isDirectory && hit.volume->folderSizesDirty && !isListed) dirty.push_back(hit.volume);
  AttrEntry before, after;
  if (LookupAttr(*hit.volume, kind->frn, before) && (before.modified != 0 || before.created != 0)) {
    return false;
  }
  AttrEntry scratch = before;
  EnsureFileAttributes(hit.volume, hit.index, scratch, Insist::kOnDisk);
  // A full cache takes nothing, and of a file that cannot be read nothing is new: to paint again would
  // only ask again.
  return PeekAttr(*hit.volume, kind->frn, after) && !IsSameAttr(before, after);
}

void Hydrate(const Hydration& job) {
  bool isChanged = false;
  std::vector<VolumeIndex*> dirty;
  for (uint64_t row = job.range.first; row < job.range.end; ++row) {
    if (!job.IsCurrentStill()) return;
    isChanged = HydrateRow((*job.rows)[row], dirty) || isChanged;
  }
  for (VolumeIndex* const volume : dirty) {
    if (!job.IsCurrentStill()) return;
    if (!volume->folderSizesDirty) continue;
    RebuildFolderSizes(*volume);
    isChanged = true;
  }
  if (isChanged && job.IsCurrentStill()) PostIfAlive(searchHooks.window, WM_ATTRS_UPDATED, job.token, 0);
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

// Two jobs that save share one flag: the second would write the same.
void SaveInJob(SearchEngine& engine, const char* name) {
  if (!keepsAttrCacheFile || saveRuns.exchange(true)) return;
  const bool isStarted = RunBackground(name, [&engine] {
    const FlagMark mark{saveRuns};
    SaveAttrCache(engine);
  });
  if (!isStarted) saveRuns = false;
}

}  // namespace

void TellAttributesChanged() {
  PostIfAlive(searchHooks.window, WM_ATTRS_UPDATED, hydrationGeneration, 0);
}

void TellSomeAreStale() {
  PostIfAlive(searchHooks.window, WM_ATTRS_UPDATED, hydrationGeneration, kSomeAreStale);
}

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
  // Before the try: a job that ends between the two finds it.
  isAskedMeanwhile = true;
  if (hydrationRuns.exchange(true)) return;
  isAskedMeanwhile = false;
  const Hydration job{std::move(rows), range, ++hydrationGeneration, searchGeneration};
  const bool isStarted = RunBackground("attr_hydration", [job] {
    const HydrationTurn turn;
    Hydrate(job);
  });
  if (!isStarted) hydrationRuns = false;
}

void PrewarmAttrCacheAsync(SearchEngine& engine) {
  engine.prewarming.Start("prewarm_attr_cache", [&engine] { PrewarmVolumes(engine); });
}

void AutosaveAttrCacheAsync(SearchEngine& engine) {
  if (ShutdownRequested || AttrCacheGeneration <= AttrSavedGeneration) return;
  SaveInJob(engine, "cache_autosave");
}

void SaveAttrCacheAfterSort(uint64_t nowMs) {
  static std::atomic<uint64_t> lastMs = 0;
  uint64_t last = lastMs;
  if (nowMs - last <= kSaveGapMs || !lastMs.compare_exchange_strong(last, nowMs)) return;
  SaveInJob(Engine(), "sort_attr_cache_save");
}

}  // namespace quilmark
