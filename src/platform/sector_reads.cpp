#include "platform/sector_reads.h"

#include <algorithm>
#include <cstring>

namespace quilmark {

namespace {

constexpr size_t kBlockBytes = 4'096;      // the largest sector that disks have (4Kn)
constexpr size_t kLeastSectorBytes = 512;  // the smallest

// All at once; from where that ends short, block by block; from where that does, sector by sector.
size_t ReadWhole(const SectorReader& read, uint64_t offset, std::span<std::byte> buffer) {
  size_t done = 0;
  for (const size_t step : {buffer.size(), kBlockBytes, kLeastSectorBytes}) {
    while (done < buffer.size()) {
      const size_t count = std::min(step - done % step, buffer.size() - done);
      const size_t got = read(offset + done, buffer.subspan(done, count));
      done += got;
      if (got < count) break;
    }
    if (done % kLeastSectorBytes != 0) break;  // the end of a file
  }
  return done;
}

}  // namespace

size_t ReadBySectors(const SectorReader& read, uint64_t offset, std::span<std::byte> buffer,
                     std::vector<std::byte>& scratch) {
  if (buffer.empty()) return 0;
  if (offset % kBlockBytes == 0 && buffer.size() % kBlockBytes == 0) {
    return ReadWhole(read, offset, buffer);
  }
  // Sector by sector as well: a bad one in front of those that are wanted must not cost them.
  for (const size_t unit : {kBlockBytes, kLeastSectorBytes}) {
    const uint64_t start = offset / unit * unit;
    const auto before = static_cast<size_t>(offset - start);
    scratch.resize((before + buffer.size() + unit - 1) / unit * unit);
    const size_t got = ReadWhole(read, start, scratch);
    if (got > before) {
      const size_t count = std::min(got - before, buffer.size());
      std::memcpy(buffer.data(), scratch.data() + before, count);
      return count;
    }
    if (before - got < kLeastSectorBytes) return 0;  // the first that is wanted is the bad one
  }
  return 0;
}

}  // namespace quilmark
