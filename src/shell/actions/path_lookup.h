// From the path of a file to its record.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "index/engine/search_engine.h"

namespace quilmark {

// Where a path was found.
struct FoundPath {
  MatchItem item;      // volume null: not found
  uint64_t build = 0;  // VolumeIndex::builds of the moment
};

// Looks the paths up in the volumes that searches look in, without regard to case and to the kind of
// their slashes: one pass over the names of a volume for all of them. One answer a path, in their order;
// of several files that answer to a path the first record counts. A path of less than 3 units is not
// found. Takes volumesMutex and, after it, indexLock shared of one volume at a time; none is held
// before. For a job: some 15 ms a million names.
[[nodiscard]] std::vector<FoundPath> FindPaths(const SearchEngine& engine,
                                               std::span<const std::u16string> paths);

}  // namespace quilmark
