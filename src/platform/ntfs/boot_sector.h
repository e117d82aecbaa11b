// Where things are on an NTFS volume, from its boot sector.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/ntfs/places.h"

namespace quilmark {

// As much of a volume's first sector as is looked at.
inline constexpr size_t kBootSectorBytes = 512;

// Sizes in bytes, places in clusters.
struct NtfsGeometry {
  uint32_t sectorBytes = 0;
  uint32_t clusterBytes = 0;
  uint32_t recordBytes = 0;  // of one FILE record
  uint32_t indexBytes = 0;   // of one INDX block
  uint64_t sectors = 0;
  ClusterNumber mftCluster;
  ClusterNumber mirrorCluster;
  uint64_t serial = 0;

  // Of the whole volume. REQUIRES a geometry of ParseBootSector, or another with cluster and sector.
  ClusterCount Clusters() const { return ClusterCount(sectors / (clusterBytes / sectorBytes)); }
};

// Parses any bytes; what lies behind the first kBootSectorBytes is not looked at. Empty unless all of it
// makes sense: powers of two in the ranges that NTFS knows, and a volume whose every byte has an offset
// of at most kMostOffset.
[[nodiscard]] std::optional<NtfsGeometry> ParseBootSector(std::span<const std::byte> sector);

}  // namespace quilmark
