// Mapping pairs: where the clusters of an attribute lie.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/ntfs/places.h"

namespace quilmark {

// A run of clusters of an attribute.
struct DataRun {
  std::optional<ClusterNumber> cluster;  // on the volume; empty: a hole, which reads as zeros
  ClusterCount clusters;
};

// Position in mapping pairs, which must outlive it. Every length is tested against them.
struct RunCursor {
  std::span<const std::byte> runs;
  size_t offset = 0;
  ClusterNumber cluster;  // of the run before: runs are stored as differences
  bool malformed = false;
};

// The next run. Empty at the end mark, at the end of the bytes where they have no mark, and with
// `malformed` set at a run that does not fit, is empty, or lies before the volume's first cluster.
[[nodiscard]] std::optional<DataRun> NextRun(RunCursor& cursor);

}  // namespace quilmark
