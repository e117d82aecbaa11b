#include "search/sort/path_tree.h"

#include <array>

#include "platform/text.h"

namespace quilmark {

namespace {

constexpr uint32_t kMostParents = 100;  // of a record in BuildPath

std::u16string NodeName(uint32_t parent, std::u16string_view foldedName) {
  std::u16string name = {static_cast<char16_t>(parent >> 16), static_cast<char16_t>(parent)};
  return name.append(foldedName);
}

uint32_t FindOrAddNode(PathTree& tree, uint32_t parent, std::u16string_view foldedName) {
  const auto number = static_cast<uint32_t>(tree.nodes.size());
  const auto [found, isNew] = tree.byName.try_emplace(NodeName(parent, foldedName), number);
  if (!isNew) return found->second;
  std::u16string text(foldedName);
  text.push_back(u'\\');
  tree.nodes.push_back({.parent = parent,
                        .depth = tree.nodes[parent].depth + 1,
                        .entry = MakeKeyEntry(tree.keys.Add(text), number)});
  return number;
}

uint32_t DriveNode(PathTree& tree, const VolumeIndex& volume) {
  return FindOrAddNode(tree, 0, FoldText(volume.drive));
}

// The record of a folder that has a part in paths: not the root.
const FileRecord* FolderOf(const VolumeIndex& volume, uint64_t frn) {
  const auto index = IndexOf(volume.frnToIndex, volume.records, frn);
  if (!index || *index == kRootWithoutRecord) return nullptr;
  const FileRecord& record = volume.records[static_cast<uint32_t>(*index)];
  return record.frn == record.parentFrn ? nullptr : &record;
}

}  // namespace

std::optional<uint32_t> FindPathNode(PathTree& tree, const VolumeIndex& volume, uint64_t parentFrn) {
  FrnMap<uint32_t>& known = tree.byFrn[&volume];
  std::array<const FileRecord*, kMostParents> chain;
  std::array<uint64_t, kMostParents> frns;
  size_t count = 0;
  uint32_t node = 0;
  for (uint64_t frn = parentFrn;;) {
    if (const auto found = known.find(frn); found != known.end()) {
      node = found->second;
      break;
    }
    const FileRecord* const folder = FolderOf(volume, frn);
    if (folder == nullptr) {
      node = known[frn] = DriveNode(tree, volume);
      break;
    }
    if (count == kMostParents || HasBackslash(NameOf(*folder))) return std::nullopt;
    frns[count] = frn;
    chain[count++] = folder;
    frn = folder->parentFrn;
  }
  while (count-- > 0) {
    node = FindOrAddNode(tree, node, FoldedNameOf(*chain[count]));
    if (tree.nodes[node].depth > kMostParents + 1) return std::nullopt;
    known[frns[count]] = node;
  }
  return node;
}

}  // namespace quilmark
