#include <array>
#include <shared_mutex>

#include "index/tables/volume_index.h"

namespace quilmark {

namespace {

constexpr size_t kMostAncestors = 100;

// The record and its ancestors, innermost first.
struct Chain {
  std::array<const FileRecord*, kMostAncestors + 1> records;
  size_t count = 0;
};

// Stops at the root (a parent of its own), at one without a record, and where the chain is broken.
Chain FollowParents(const VolumeIndex& volume, uint32_t index) {
  Chain chain;
  chain.records[chain.count++] = &volume.records[index];
  while (chain.count <= kMostAncestors) {
    const auto parentIndex =
        IndexOf(volume.frnToIndex, volume.records, chain.records[chain.count - 1]->parentFrn);
    if (!parentIndex || *parentIndex == kRootWithoutRecord) break;
    const FileRecord& parent = volume.records[static_cast<uint32_t>(*parentIndex)];
    if (parent.frn == parent.parentFrn) break;
    chain.records[chain.count++] = &parent;
  }
  return chain;
}

}  // namespace

void BuildPathInto(const VolumeIndex& volume, uint32_t index, std::u16string& path) {
  path.assign(volume.drive);
  if (index >= volume.records.size()) return;
  const Chain chain = FollowParents(volume, index);
  for (size_t i = chain.count; i-- > 0;) {
    path.push_back(u'\\');
    path.append(NameOf(*chain.records[i]));
  }
}

std::u16string BuildPath(const VolumeIndex& volume, uint32_t index) {
  std::u16string path;
  BuildPathInto(volume, index, path);
  return path;
}

std::u16string BuildPathLocked(const VolumeIndex& volume, uint32_t index) {
  const std::shared_lock lock(volume.indexLock);
  return BuildPath(volume, index);
}

}  // namespace quilmark
