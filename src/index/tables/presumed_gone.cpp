#include "index/tables/presumed_gone.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/file_reference.h"

namespace quilmark {

namespace {

std::optional<uint32_t> ParentIndex(const VolumeIndex& volume, uint32_t index) {
  const auto parent = IndexOf(volume.frnToIndex, volume.records, volume.records[index].parentFrn);
  if (!parent || *parent == kRootWithoutRecord) return std::nullopt;
  return static_cast<uint32_t>(*parent);
}

constexpr size_t kMostAncestors = 100;  // as BuildPath follows

// Folders that are gone, each with the uppermost chosen folder that it lies in: that folder itself, for
// one that lies in no other.
using GoneFolders = boost::unordered_flat_map<uint64_t, uint64_t>;

// REQUIRES that `gone` holds the chosen folders alone.
uint64_t UppermostOf(const VolumeIndex& volume, const GoneFolders& gone, uint32_t folder) {
  uint64_t uppermost = volume.records[folder].frn;
  auto at = ParentIndex(volume, folder);
  for (size_t step = 0; at && step < kMostAncestors; ++step) {
    if (gone.contains(volume.records[*at].frn)) uppermost = volume.records[*at].frn;
    at = ParentIndex(volume, *at);
  }
  return uppermost;
}

GoneFolders ChosenFolders(const VolumeIndex& volume, std::span<const uint32_t> folders) {
  GoneFolders chosen, gone;
  for (const uint32_t index : folders) chosen.emplace(volume.records[index].frn, 0);
  for (const uint32_t index : folders) {
    gone.emplace(volume.records[index].frn, UppermostOf(volume, chosen, index));
  }
  return gone;
}

void MarkGone(VolumeIndex& volume, uint32_t index) {
  const uint64_t frn = volume.records[index].frn;
  MarkDeleted(volume, index);
  {
    const std::scoped_lock lock(volume.attrLock);
    if (volume.attrs.erase(frn) != 0) ++AttrCacheGeneration;
  }
  const std::scoped_lock lock(volume.mftSizesLock);
  volume.mftSizes.erase(frn);
  volume.mftSizes.erase(RecordNumberOf(frn));  // the table may go by record number
}

void MarkWithTree(VolumeIndex& volume, uint32_t index, uint64_t root) {
  const uint64_t frn = volume.records[index].frn;
  if (root != frn) {
    volume.presumedGone.below[root].push_back(frn);
    volume.presumedGone.with.insert_or_assign(frn, root);
  }
  MarkGone(volume, index);
}

// Marks what stands right below the folders of `gone`, and adds the folders among it. True if there were
// such: something below them may stand before them.
bool MarkOneLevel(VolumeIndex& volume, GoneFolders& gone) {
  bool hasGrown = false;
  for (uint32_t index = 0; index < volume.records.size(); ++index) {
    const FileRecord& record = volume.records[index];
    if (record.deleted && !record.isDirectory) continue;
    const auto parent = gone.find(record.parentFrn);
    if (parent == gone.end()) continue;
    const uint64_t root = parent->second;
    if (record.isDirectory) hasGrown = gone.emplace(record.frn, root).second || hasGrown;
    if (!record.deleted) MarkWithTree(volume, index, root);
  }
  return hasGrown;
}

// Goes over all records once for a folder without folders in it, and hardly more often for others, as
// folders mostly stand before what they hold: no record is asked for its ancestors.
void PresumeTreesGone(VolumeIndex& volume, std::span<const uint32_t> folders) {
  GoneFolders gone = ChosenFolders(volume, folders);
  const GoneFolders chosen = gone;
  for (const uint32_t index : folders) {
    if (!volume.records[index].deleted) {
      MarkWithTree(volume, index, chosen.at(volume.records[index].frn));
    }
  }
  while (MarkOneLevel(volume, gone)) {
  }
}

// The files that were marked with the folder and of which the journal has told nothing since; nobody
// asks for them again.
std::vector<uint64_t> TakeBelow(PresumedGone& gone, uint64_t folder) {
  const auto entry = gone.below.find(folder);
  if (entry == gone.below.end()) return {};
  std::vector<uint64_t> files = std::move(entry->second);
  gone.below.erase(entry);
  std::erase_if(files, [&](uint64_t frn) {
    const auto with = gone.with.find(frn);
    if (with == gone.with.end() || with->second != folder) return true;
    gone.with.erase(with);
    return false;
  });
  return files;
}

void BringBack(VolumeIndex& volume, uint64_t frn) {
  const auto index = IndexOf(volume.frnToIndex, volume.records, frn);
  if (!index || *index == kRootWithoutRecord) return;
  const FileRecord& record = volume.records[static_cast<uint32_t>(*index)];
  // The name that it has: it lives again, and nothing else changes.
  RenameRecord(volume, static_cast<uint32_t>(*index), record.parentFrn, NameOf(record));
}

}  // namespace

void PresumeGone(VolumeIndex& volume, std::span<const uint32_t> indices) {
  const auto isAlive = [&](uint32_t index) {
    return index < volume.records.size() && !volume.records[index].deleted;
  };
  std::vector<uint32_t> folders;
  for (const uint32_t index : indices) {
    if (isAlive(index) && volume.records[index].isDirectory) folders.push_back(index);
  }
  if (!folders.empty()) PresumeTreesGone(volume, folders);
  for (const uint32_t index : indices) {
    if (isAlive(index)) MarkGone(volume, index);
  }
  volume.folderSizesDirty = true;
}

void ConfirmGone(VolumeIndex& volume, uint64_t frn) {
  volume.presumedGone.with.erase(frn);
  TakeBelow(volume.presumedGone, frn);
}

void WithdrawGone(VolumeIndex& volume, uint64_t frn) {
  volume.presumedGone.with.erase(frn);
  for (const uint64_t below : TakeBelow(volume.presumedGone, frn)) BringBack(volume, below);
}

}  // namespace quilmark
