#include "search/results/content_candidates.h"

#include <algorithm>
#include <shared_mutex>

#include "search/results/glance.h"

namespace quilmark {

namespace {

constexpr uint32_t kRecordsACheck = 256;

// One collection on its way.
struct Collection {
  const SearchJob& job;
  const SearchScope& scope;
  std::vector<std::u16string> exts;  // sorted
  ResultSet candidates;
  std::u16string path;  // reused by the Desktop test
};

bool HasExtension(const Collection& collection, const FileRecord& record) {
  const std::u16string_view name = FoldedNameOf(record);
  const size_t dot = name.rfind(u'.');
  return dot != name.npos &&
         std::binary_search(collection.exts.begin(), collection.exts.end(), name.substr(dot));
}

bool IsInScope(const VolumeIndex& volume, uint32_t index, Collection& collection) {
  if (!collection.scope.desktopOnly) return true;
  BuildPathInto(volume, index, collection.path);
  return PathInDesktop(collection.path, *collection.scope.desktop);
}

// False if the job went stale on the way. indexLock held shared.
bool CollectVolume(VolumeIndex& volume, Collection& collection) {
  const uint32_t count = volume.records.size();
  for (uint32_t i = 0; i < count; ++i) {
    if (i % kRecordsACheck == 0 && !collection.job.ticket.IsCurrent()) return false;
    const FileRecord& record = volume.records[i];
    if (record.deleted || record.isDirectory || !HasExtension(collection, record)) continue;
    if (IsInScope(volume, i, collection)) collection.candidates.push_back({&volume, i});
  }
  return true;
}

}  // namespace

std::optional<ResultSet> CollectContentCandidates(const SearchJob& job, const ContentQuery& query,
                                                  const SearchScope& scope) {
  Collection collection{.job = job, .scope = scope, .exts = query.Exts, .candidates = {}, .path = {}};
  std::sort(collection.exts.begin(), collection.exts.end());
  for (VolumeIndex* const volume : VolumesInScope(CopyVolumes(Engine()), scope)) {
    if (!job.ticket.IsCurrent()) return std::nullopt;
    if (!IsSearchable(*volume)) continue;
    std::shared_lock lock(volume->indexLock, std::defer_lock);
    if (job.options.waitsForWriters) {
      lock.lock();
    } else if (!lock.try_lock()) {
      continue;
    }
    if (!CollectVolume(*volume, collection)) return std::nullopt;
  }
  if (!job.ticket.IsCurrent()) return std::nullopt;
  return std::move(collection.candidates);
}

}  // namespace quilmark
