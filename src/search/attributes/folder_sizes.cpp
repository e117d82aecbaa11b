#include "search/attributes/folder_sizes.h"

#include <mutex>
#include <shared_mutex>

#include "platform/file_reference.h"

namespace quilmark {

namespace {

constexpr int kMostParents = 64;

// The live record of a folder; -1 for none.
int64_t RecordOf(const VolumeIndex& volume, uint64_t frn) {
  const auto index = IndexOf(volume.frnToIndex, volume.records, frn);
  if (!index || *index < 0 || *index >= int64_t{volume.records.size()}) return -1;
  return volume.records[static_cast<uint32_t>(*index)].deleted ? -1 : *index;
}

uint64_t SizeIn(const FrnMap<MftSize>& sizes, uint64_t frn) {
  auto found = sizes.find(frn);
  if (found == sizes.end()) found = sizes.find(RecordNumberOf(frn));
  return found == sizes.end() ? 0 : found->second.logical;
}

uint64_t SizeIn(const FrnMap<AttrEntry>& attrs, uint64_t frn) {
  const auto found = attrs.find(frn);
  const bool counts = found != attrs.end() && found->second.valid && found->second.size > 0;
  return counts ? static_cast<uint64_t>(found->second.size) : 0;
}

// What lies in each folder itself. All files of a folder have the same parents, so that only folders,
// and not files, walk up.
template <typename Sizes>
FrnMap<uint64_t> SumByParent(const VolumeIndex& volume, const Sizes& sizes) {
  FrnMap<uint64_t> sums;
  sums.reserve(volume.records.size() / 8 + 1);
  uint64_t parent = 0;
  uint64_t* sum = nullptr;  // of that parent: neighbours in the index often share it
  for (uint32_t index = 0; index < volume.records.size(); ++index) {
    const FileRecord& record = volume.records[index];
    if (record.deleted || record.isDirectory) continue;
    const uint64_t size = SizeIn(sizes, record.frn);
    if (size == 0 || record.parentFrn == 0) continue;
    if (sum == nullptr || record.parentFrn != parent) {
      parent = record.parentFrn;
      sum = &sums[parent];
    }
    *sum += size;
  }
  return sums;
}

FrnMap<uint64_t> AddUp(const VolumeIndex& volume, const FrnMap<uint64_t>& sums) {
  FrnMap<uint64_t> totals;
  totals.reserve(volume.records.size() / 8 + 1);
  for (const auto& [folder, size] : sums) {
    uint64_t parent = folder;
    for (int step = 0; step < kMostParents && parent != 0; ++step) {
      totals[parent] += size;
      const int64_t record = RecordOf(volume, parent);
      if (record < 0) break;
      const uint64_t next = volume.records[static_cast<uint32_t>(record)].parentFrn;
      if (next == parent) break;  // the root of NTFS lies in itself
      parent = next;
    }
  }
  return totals;
}

FrnMap<MftSize> CopyMftSizes(const VolumeIndex& volume) {
  const std::shared_lock lock(volume.mftSizesLock);
  return volume.mftSizes;
}

}  // namespace

void RebuildFolderSizes(VolumeIndex& volume) {
  // One after the other: the last to begin is the last to publish.
  const std::scoped_lock oneAtATime(volume.folderSizesBuild);
  // Before the walk: a size that arrives meanwhile asks for another one.
  volume.folderSizesDirty = false;
  const FrnMap<MftSize> mftSizes = CopyMftSizes(volume);
  FrnMap<uint64_t> totals;
  {
    const std::shared_lock lock(volume.indexLock);
    if (mftSizes.empty()) {
      const std::shared_lock attrLock(volume.attrLock);
      totals = AddUp(volume, SumByParent(volume, volume.attrs));
    } else {
      totals = AddUp(volume, SumByParent(volume, mftSizes));
    }
  }
  const std::scoped_lock lock(volume.folderSizesLock);
  volume.folderSizes.swap(totals);
}

std::optional<uint64_t> GetFolderSize(VolumeIndex& volume, uint64_t frn, IfDirty ifDirty) {
  if (ifDirty == IfDirty::kRebuild && volume.folderSizesDirty) RebuildFolderSizes(volume);
  const std::shared_lock lock(volume.folderSizesLock);
  const auto found = volume.folderSizes.find(frn);
  if (found == volume.folderSizes.end()) return std::nullopt;
  return found->second;
}

void InstallMftSizes(VolumeIndex& volume, FrnMap<MftSize> sizes) {
  {
    const std::scoped_lock lock(volume.mftSizesLock);
    volume.mftSizes.swap(sizes);
  }
  volume.folderSizesDirty = true;
  RebuildFolderSizes(volume);
}

}  // namespace quilmark
