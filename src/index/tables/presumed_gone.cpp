#include "index/tables/presumed_gone.h"

#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/file_reference.h"

namespace quilmark {

namespace {

// What is known of a record while a tree is looked for.
enum class Place : uint8_t { kUnknown, kOnTheWay, kOutside, kInside };

std::optional<uint32_t> ParentIndex(const VolumeIndex& volume, uint32_t index) {
  const auto parent = IndexOf(volume.frnToIndex, volume.records, volume.records[index].parentFrn);
  if (!parent || *parent == kRootWithoutRecord) return std::nullopt;
  return static_cast<uint32_t>(*parent);
}

constexpr size_t kMostAncestors = 100;  // as BuildPath follows

// Finds the uppermost chosen folder that each record lies below: its index in `roots` for a record that
// is Place::kInside.
struct Tree {
  const VolumeIndex& volume;
  std::vector<Place> places;
  std::vector<uint32_t> roots;
  std::vector<uint32_t> way;  // from a record up to the first whose place is known

  Tree(const VolumeIndex& of, std::span<const uint32_t> folders)
      : volume(of), places(of.records.size(), Place::kUnknown), roots(of.records.size()) {
    for (const uint32_t index : folders) places[index] = Place::kInside;
    for (const uint32_t index : folders) roots[index] = UppermostOf(index);
  }

  // REQUIRES that no other records than the chosen folders are settled.
  uint32_t UppermostOf(uint32_t folder) const {
    uint32_t uppermost = folder;
    auto at = ParentIndex(volume, folder);
    for (size_t step = 0; at && step < kMostAncestors; ++step) {
      if (places[*at] == Place::kInside) uppermost = *at;
      at = ParentIndex(volume, *at);
    }
    return uppermost;
  }

  // Each record is walked over once. A circle of parents lies outside.
  void Settle(uint32_t index) {
    way.clear();
    std::optional<uint32_t> at = index;
    while (at && places[*at] == Place::kUnknown) {
      places[*at] = Place::kOnTheWay;
      way.push_back(*at);
      at = ParentIndex(volume, *at);
    }
    const bool isInside = at && places[*at] == Place::kInside;
    for (const uint32_t each : way) {
      places[each] = isInside ? Place::kInside : Place::kOutside;
      if (isInside) roots[each] = roots[*at];
    }
  }
};

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

void PresumeTreesGone(VolumeIndex& volume, std::span<const uint32_t> folders) {
  Tree tree(volume, folders);
  PresumedGone& gone = volume.presumedGone;
  for (uint32_t index = 0; index < volume.records.size(); ++index) {
    if (volume.records[index].deleted) continue;
    tree.Settle(index);
    if (tree.places[index] != Place::kInside) continue;
    const uint32_t root = tree.roots[index];
    const uint64_t frn = volume.records[index].frn, rootFrn = volume.records[root].frn;
    if (root != index) {
      gone.below[rootFrn].push_back(frn);
      gone.with.insert_or_assign(frn, rootFrn);
    }
    MarkGone(volume, index);
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
