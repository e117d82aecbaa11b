// Any device that reads short and has bad sectors: what is handed out is what the device holds at that
// place, and all of it up to the first bad sector or the end.
#include <vector>

#include "platform/sector_reads.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

constexpr size_t kSector = 512, kSectors = 64;

// A device of so many sectors, one bit for each that is bad.
struct Device {
  size_t sectors = 0;
  uint64_t bad = 0;
  bool readsWholeOnly = false;  // nothing at all where any sector is bad or behind the end

  static std::byte ByteAt(uint64_t place) {
    return static_cast<std::byte>(place * 31 + place / kSector);
  }
  bool IsGood(uint64_t sector) const { return sector < sectors && (bad >> sector & 1) == 0; }
  size_t Read(uint64_t offset, std::span<std::byte> buffer) const {
    Require(offset % kSector == 0 && buffer.size() % kSector == 0);
    size_t good = 0;
    while (good < buffer.size() && IsGood((offset + good) / kSector)) good += kSector;
    if (readsWholeOnly && good < buffer.size()) return 0;
    for (size_t i = 0; i < good; ++i) buffer[i] = ByteAt(offset + i);
    return good;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const Device device{.sectors = input.Take<uint8_t>() % kSectors,
                      .bad = input.Take<uint64_t>(),
                      .readsWholeOnly = (input.Take<uint8_t>() & 1) != 0};
  const SectorReader read = [&](uint64_t offset, std::span<std::byte> buffer) {
    return device.Read(offset, buffer);
  };
  std::vector<std::byte> scratch;
  while (!input.rest.empty()) {
    const uint64_t offset = input.Take<uint16_t>() % (kSectors * kSector);
    std::vector<std::byte> buffer(input.Take<uint16_t>() % (kSectors * kSector));
    const size_t got = ReadBySectors(read, offset, buffer, scratch);
    size_t expected = 0;
    while (expected < buffer.size() && device.IsGood((offset + expected) / kSector)) ++expected;
    Require(got == expected);
    for (size_t i = 0; i < got; ++i) Require(buffer[i] == Device::ByteAt(offset + i));
  }
  return 0;
}
