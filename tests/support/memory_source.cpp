#include "support/memory_source.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <stdexcept>

#include "platform/bytes.h"
#include "platform/ntfs/data_runs.h"
#include "platform/ntfs/mft_record.h"

namespace quilmark {

namespace {

class MemorySource : public ByteSource {
 public:
  explicit MemorySource(const MemoryVolume& volume) : volume_(volume) {}
  uint64_t Size() const override { return volume_.size; }

  size_t ReadAt(ByteOffset start, std::span<std::byte> buffer) override {
    const uint64_t offset = start.value;
    if (offset >= volume_.size) return 0;
    auto count = static_cast<size_t>(std::min<uint64_t>(buffer.size(), volume_.size - offset));
    for (const auto& [first, end] : volume_.badPlaces) {
      if (offset < end && offset + count > first) {
        count = first > offset ? static_cast<size_t>(first - offset) : 0;
      }
    }
    std::fill_n(buffer.begin(), count, std::byte{0});
    for (const auto& [place, bytes] : volume_.stretches) {
      const uint64_t from = std::max(offset, place);
      const uint64_t to = std::min(offset + count, place + bytes.size());
      if (from >= to) continue;
      std::memcpy(buffer.data() + (from - offset), bytes.data() + (from - place),
                  static_cast<size_t>(to - from));
    }
    return count;
  }

 private:
  const MemoryVolume& volume_;
};

// The unnamed $DATA of a record, or its first named one.
NtfsAttribute DataOf(std::span<const std::byte> record, bool isNamed) {
  AttributeCursor cursor{.record = record, .offset = ParseRecordHeader(record)->firstAttribute};
  while (const auto attribute = NextAttribute(cursor)) {
    if (attribute->type == kData && attribute->name.empty() != isNamed) return *attribute;
  }
  throw std::invalid_argument("no $DATA");
}

std::vector<DataRun> RunsOf(const NtfsAttribute& attribute) {
  std::vector<DataRun> runs;
  RunCursor cursor{.runs = attribute.runs};
  while (const auto run = NextRun(cursor)) runs.push_back(*run);
  return runs;
}

std::vector<std::byte> FixedRecord(std::span<const std::byte> mft, size_t number, size_t recordBytes) {
  const auto stored = mft.subspan(number * recordBytes, recordBytes);
  std::vector<std::byte> record(stored.begin(), stored.end());
  if (!ApplyFixups(record)) throw std::invalid_argument("damaged record");
  return record;
}

}  // namespace

std::unique_ptr<ByteSource> MemoryVolume::Open() const { return std::make_unique<MemorySource>(*this); }

std::vector<std::byte> MakeBootSector(uint32_t clusterBytes, uint32_t recordBytes, uint64_t clusters,
                                      uint64_t mftCluster, uint64_t mirrorCluster) {
  const auto sizeOf = [&](uint32_t bytes) {
    if (bytes >= clusterBytes) return static_cast<uint8_t>(bytes / clusterBytes);
    return static_cast<uint8_t>(256 - std::countr_zero(bytes));
  };
  std::vector<std::byte> sector(512);
  std::memcpy(sector.data() + 3, "NTFS    ", 8);
  StoreLe(std::span(sector), 11, uint16_t{512});
  const uint32_t sectors = clusterBytes / 512;
  const uint32_t perCluster =
      sectors <= 128 ? sectors : 256 - static_cast<uint32_t>(std::countr_zero(sectors));
  StoreLe(std::span(sector), 13, static_cast<uint8_t>(perCluster));
  StoreLe(std::span(sector), 40, clusters * sectors);
  StoreLe(std::span(sector), 48, mftCluster);
  StoreLe(std::span(sector), 56, mirrorCluster);
  StoreLe(std::span(sector), 64, sizeOf(recordBytes));
  StoreLe(std::span(sector), 68, sizeOf(4096));
  StoreLe(std::span(sector), 72, uint64_t{0x1122'3344'5566'7788});
  StoreLe(std::span(sector), 510, uint16_t{0xAA55});
  return sector;
}

MemoryVolume VolumeOfMft(std::vector<std::byte> mft, std::vector<std::byte> bootSector) {
  const size_t recordBytes = LoadLe<uint32_t>(mft, 28);
  const auto first = FixedRecord(mft, 0, recordBytes);
  const auto mirror = FixedRecord(mft, 1, recordBytes);
  const NtfsAttribute data = DataOf(first, false);
  const auto runs = RunsOf(data);
  uint64_t clusters = 0, top = 0;
  for (const DataRun& run : runs) {
    clusters += run.clusters.value;
    top = std::max(top, run.cluster->value + run.clusters.value);
  }
  const uint64_t clusterBytes = data.allocatedBytes / clusters;
  const uint64_t mirrorCluster = RunsOf(DataOf(mirror, false)).front().cluster->value;
  if (bootSector.empty()) {
    // $BadClus:$Bad is as large as the volume.
    const auto bad = FixedRecord(mft, 8, recordBytes);
    top = std::max({top, mirrorCluster + 1, DataOf(bad, true).allocatedBytes / clusterBytes});
    bootSector = MakeBootSector(static_cast<uint32_t>(clusterBytes), static_cast<uint32_t>(recordBytes),
                                top, runs.front().cluster->value, mirrorCluster);
  }
  MemoryVolume volume;
  volume.size = LoadLe<uint64_t>(bootSector, 40) * 512 + 512;
  volume.stretches[0] = std::move(bootSector);
  size_t offset = 0;
  for (const DataRun& run : runs) {
    const size_t count = std::min<size_t>(run.clusters.value * clusterBytes, mft.size() - offset);
    const auto begin = mft.begin() + static_cast<ptrdiff_t>(offset);
    volume.stretches[run.cluster->value * clusterBytes].assign(begin,
                                                               begin + static_cast<ptrdiff_t>(count));
    offset += count;
  }
  return volume;
}

}  // namespace quilmark
