// A volume in memory: stretches of bytes at places, zeros between them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "platform/byte_source.h"

namespace quilmark {

// Shared by every source over it, so that a test can change a volume that is open.
struct MemoryVolume {
  uint64_t size = 0;
  std::map<uint64_t, std::vector<std::byte>> stretches;  // by place, not overlapping
  std::vector<std::pair<uint64_t, uint64_t>> badPlaces;  // [first, second) cannot be read

  std::unique_ptr<ByteSource> Open() const;
};

// A volume that holds a bare $MFT at the clusters that its own first record names. `bootSector` may be
// empty: one that fits is made.
MemoryVolume VolumeOfMft(std::vector<std::byte> mft, std::vector<std::byte> bootSector = {});

// A boot sector of such a volume.
std::vector<std::byte> MakeBootSector(uint32_t clusterBytes, uint32_t recordBytes, uint64_t clusters,
                                      uint64_t mftCluster, uint64_t mirrorCluster);

}  // namespace quilmark
