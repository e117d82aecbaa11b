// Folders of the rows of a sort by path. Rows of one folder are compared by their names alone, and the
// folders among them by theirs: no path is built.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "index/engine/search_engine.h"
#include "search/sort/sort_key.h"

namespace quilmark {

// A folder that paths go through. All whose paths agree but for case are one.
struct PathNode {
  uint32_t parent = 0;  // node 0 has none
  uint32_t depth = 0;   // of the drives: 1
  KeyEntry entry;       // of its name and the backslash behind it
};

struct PathTree {
  std::vector<PathNode> nodes = {{}};  // node 0: where the drives lie
  SortKeys keys;

  boost::unordered_flat_map<std::u16string, uint32_t> byName;  // node of parent's number and folded name
  boost::unordered_flat_map<const VolumeIndex*, FrnMap<uint32_t>> byFrn;  // of folders met
};

// True for a name that would look like several: rows below it have no place in a tree.
inline bool HasBackslash(std::u16string_view name) { return name.find(u'\\') != name.npos; }

// The node of the folder that `parentFrn` leads to, made if it is new; BuildPath's rules. Empty where
// the tree cannot stand for the paths: more parents than a path has, a circle, a name with a backslash.
// indexLock held.
std::optional<uint32_t> FindPathNode(PathTree& tree, const VolumeIndex& volume, uint64_t parentFrn);

}  // namespace quilmark
