#include "platform/ntfs/boot_sector.h"

#include <bit>
#include <cstring>

#include "platform/bytes.h"

namespace quilmark {

namespace {

// Byte offsets; the layout is described at docs.microsoft.com under "NTFS boot sector".
constexpr size_t kOemId = 3, kSectorBytes = 11, kClusterSectors = 13, kSectors = 40, kMft = 48,
                 kMirror = 56, kRecordSize = 64, kIndexSize = 68, kSerial = 72, kSignature = 510;

// Windows makes records of 1,024 and 4,096 bytes. A record is no shorter than the 512 bytes of a fix-up;
// the upper limit is chosen, since an attribute tells offsets in 16 bits.
constexpr uint32_t kLeastRecord = 512, kMostRecord = 65'536;
constexpr uint32_t kMostCluster = 2u << 20;  // of Windows 10 1709 and later: "format /A:2048K"
constexpr uint32_t kLeastSector = 256, kMostSector = 4'096;  // the least that formatters take; 4Kn disks

// Sectors a cluster; above 128 a negative exponent.
uint64_t SectorsPerCluster(uint8_t value) {
  if (value <= 128) return value;
  const unsigned exponent = 256u - value;
  return exponent < 32 ? uint64_t{1} << exponent : 0;
}

// Clusters, or a negative exponent of bytes.
uint64_t SizeOfUnit(int8_t value, uint64_t clusterBytes) {
  if (value > 0) return static_cast<uint64_t>(value) * clusterBytes;
  const int exponent = -value;
  return exponent < 32 ? uint64_t{1} << exponent : 0;
}

bool IsSize(uint64_t size, uint64_t least, uint64_t most) {
  return std::has_single_bit(size) && size >= least && size <= most;
}

}  // namespace

std::optional<NtfsGeometry> ParseBootSector(std::span<const std::byte> sector) {
  if (sector.size() < kBootSectorBytes) return std::nullopt;
  if (std::memcmp(sector.data() + kOemId, "NTFS    ", 8) != 0) return std::nullopt;
  if (LoadLe<uint16_t>(sector, kSignature) != 0xAA55) return std::nullopt;

  NtfsGeometry geometry;
  geometry.sectorBytes = LoadLe<uint16_t>(sector, kSectorBytes);
  if (!IsSize(geometry.sectorBytes, kLeastSector, kMostSector)) return std::nullopt;
  const uint64_t cluster =
      SectorsPerCluster(LoadLe<uint8_t>(sector, kClusterSectors)) * geometry.sectorBytes;
  if (!IsSize(cluster, geometry.sectorBytes, kMostCluster)) return std::nullopt;
  const uint64_t record = SizeOfUnit(LoadLe<int8_t>(sector, kRecordSize), cluster);
  const uint64_t index = SizeOfUnit(LoadLe<int8_t>(sector, kIndexSize), cluster);
  if (!IsSize(record, kLeastRecord, kMostRecord) || !IsSize(index, kLeastRecord, kMostCluster)) {
    return std::nullopt;
  }
  geometry.clusterBytes = static_cast<uint32_t>(cluster);
  geometry.recordBytes = static_cast<uint32_t>(record);
  geometry.indexBytes = static_cast<uint32_t>(index);
  geometry.sectors = LoadLe<uint64_t>(sector, kSectors);
  geometry.mftCluster = ClusterNumber(LoadLe<uint64_t>(sector, kMft));
  geometry.mirrorCluster = ClusterNumber(LoadLe<uint64_t>(sector, kMirror));
  geometry.serial = LoadLe<uint64_t>(sector, kSerial);
  // Every place on the volume then has a byte offset.
  if (geometry.sectors > kMostOffset / geometry.sectorBytes) return std::nullopt;
  if (geometry.mftCluster.value >= geometry.Clusters().value) return std::nullopt;
  return geometry;
}

}  // namespace quilmark
