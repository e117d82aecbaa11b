// Any bytes as a boot sector: sizes are powers of two within the limits of NTFS, every place on the
// volume has an offset, nothing behind the first 512 bytes counts, and a sector made from the answer
// gives it again.
#include <bit>

#include "platform/bytes.h"
#include "platform/ntfs/boot_sector.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

bool IsPower(uint64_t size, uint64_t least, uint64_t most) {
  return std::has_single_bit(size) && size >= least && size <= most;
}

// In clusters, or as a negative exponent of bytes.
uint8_t UnitOf(uint32_t bytes, uint32_t clusterBytes) {
  if (bytes >= clusterBytes && bytes / clusterBytes < 128) {
    return static_cast<uint8_t>(bytes / clusterBytes);
  }
  return static_cast<uint8_t>(256 - std::countr_zero(bytes));
}

std::array<std::byte, kBootSectorBytes> SectorOf(const NtfsGeometry& geometry) {
  std::array<std::byte, kBootSectorBytes> sector{};
  const uint32_t sectors = geometry.clusterBytes / geometry.sectorBytes;
  const auto perCluster =
      sectors <= 128 ? sectors : 256 - static_cast<uint32_t>(std::countr_zero(sectors));
  std::memcpy(sector.data() + 3, "NTFS    ", 8);
  StoreLe(std::span(sector), 11, static_cast<uint16_t>(geometry.sectorBytes));
  StoreLe(std::span(sector), 13, static_cast<uint8_t>(perCluster));
  StoreLe(std::span(sector), 40, geometry.sectors);
  StoreLe(std::span(sector), 48, geometry.mftCluster.value);
  StoreLe(std::span(sector), 56, geometry.mirrorCluster.value);
  StoreLe(std::span(sector), 64, UnitOf(geometry.recordBytes, geometry.clusterBytes));
  StoreLe(std::span(sector), 68, UnitOf(geometry.indexBytes, geometry.clusterBytes));
  StoreLe(std::span(sector), 72, geometry.serial);
  StoreLe(std::span(sector), 510, uint16_t{0xAA55});
  return sector;
}

bool IsSame(const NtfsGeometry& a, const NtfsGeometry& b) {
  return a.sectorBytes == b.sectorBytes && a.clusterBytes == b.clusterBytes &&
         a.recordBytes == b.recordBytes && a.indexBytes == b.indexBytes && a.sectors == b.sectors &&
         a.mftCluster == b.mftCluster && a.mirrorCluster == b.mirrorCluster && a.serial == b.serial;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto bytes = std::as_bytes(std::span(data, size));
  const auto geometry = ParseBootSector(bytes);
  if (!geometry) return 0;
  Require(size >= kBootSectorBytes && !ParseBootSector(bytes.first(kBootSectorBytes - 1)));
  Require(IsPower(geometry->sectorBytes, 256, 4'096));
  Require(IsPower(geometry->clusterBytes, geometry->sectorBytes, 2 << 20));
  Require(IsPower(geometry->recordBytes, 512, 65'536));
  Require(IsPower(geometry->indexBytes, 512, 2 << 20));
  Require(geometry->sectors <= (uint64_t{1} << 62) / geometry->sectorBytes);
  Require(geometry->mftCluster.value < geometry->Clusters().value);
  const ClusterNumber last(geometry->Clusters().value - 1);
  Require(OffsetOf(last, geometry->clusterBytes).has_value());
  const auto again = ParseBootSector(SectorOf(*geometry));
  Require(again && IsSame(*again, *geometry));
  return 0;
}
