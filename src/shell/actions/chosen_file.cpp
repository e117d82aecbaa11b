#include "shell/actions/chosen_file.h"

#include <map>
#include <mutex>
#include <shared_mutex>
#include <vector>

#include "index/tables/presumed_gone.h"
#include "search/results/glance.h"

namespace quilmark {

namespace {

// indexLock held, shared or exclusive.
bool IsSameRecord(const ChosenFile& file) {
  const VolumeIndex& volume = *file.hit.volume;
  if (volume.builds != file.build || file.hit.index >= volume.records.size()) return false;
  const FileRecord& record = volume.records[file.hit.index];
  return !record.deleted && record.frn == file.frn && BuildPath(volume, file.hit.index) == file.path;
}

}  // namespace

std::optional<ChosenFile> SeeFile(const MatchItem& hit) {
  // A build holds the lock for as long as it takes.
  if (hit.volume == nullptr || !IsSearchable(*hit.volume)) return std::nullopt;
  const std::shared_lock lock(hit.volume->indexLock);
  if (!IsSearchable(*hit.volume) || hit.index >= hit.volume->records.size()) return std::nullopt;
  const FileRecord& record = hit.volume->records[hit.index];
  if (record.deleted) return std::nullopt;
  return ChosenFile{.hit = hit,
                    .path = BuildPath(*hit.volume, hit.index),
                    .frn = record.frn,
                    .parentFrn = record.parentFrn,
                    .build = hit.volume->builds};
}

bool IsStillThere(const ChosenFile& file) {
  if (!IsSearchable(*file.hit.volume)) return false;
  const std::shared_lock lock(file.hit.volume->indexLock);
  return IsSameRecord(file);
}

std::optional<MatchItem> FolderOf(const ChosenFile& file) {
  VolumeIndex& volume = *file.hit.volume;
  if (!IsSearchable(volume)) return std::nullopt;
  const std::shared_lock lock(volume.indexLock);
  if (volume.builds != file.build) return std::nullopt;
  const auto index = IndexOf(volume.frnToIndex, volume.records, file.parentFrn);
  if (!index || *index == kRootWithoutRecord) return std::nullopt;
  const auto folder = static_cast<uint32_t>(*index);
  if (volume.records[folder].deleted) return std::nullopt;
  return MatchItem{&volume, folder};
}

void MarkDeletedInIndex(std::span<const ChosenFile> files) {
  std::map<VolumeIndex*, std::vector<const ChosenFile*>> byVolume;
  for (const ChosenFile& file : files) byVolume[file.hit.volume].push_back(&file);
  for (const auto& [volume, ofVolume] : byVolume) {
    if (!IsSearchable(*volume)) continue;  // a build finds out by itself
    const std::unique_lock lock(volume->indexLock);
    std::vector<uint32_t> gone;
    for (const ChosenFile* file : ofVolume) {
      if (IsSameRecord(*file)) gone.push_back(file->hit.index);
    }
    PresumeGone(*volume, gone);
  }
}

}  // namespace quilmark
