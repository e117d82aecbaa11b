#include "platform/sector_reads.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quilmark {
namespace {

using Bytes = std::vector<std::byte>;

// A device of these bytes that refuses what is not in its sectors, and a read as a whole where any part
// of it is behind the end or bad.
struct StrictDevice {
  Bytes bytes;
  size_t sectorBytes = 512;
  uint64_t badPlace = UINT64_MAX;
  size_t refused = 0;  // reads that were not in whole sectors

  StrictDevice(size_t size, size_t sector) : bytes(size), sectorBytes(sector) {
    for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::byte>(i * 7 + i / 256);
  }
  size_t Read(uint64_t offset, std::span<std::byte> buffer) {
    const bool isAligned = offset % sectorBytes == 0 && buffer.size() % sectorBytes == 0;
    refused += isAligned ? 0 : 1;
    const bool isBad = offset <= badPlace && badPlace < offset + buffer.size();
    if (!isAligned || isBad || offset + buffer.size() > bytes.size()) return 0;
    std::copy_n(bytes.begin() + static_cast<ptrdiff_t>(offset), buffer.size(), buffer.begin());
    return buffer.size();
  }
  Bytes Get(uint64_t offset, size_t length) {
    Bytes buffer(length), scratch;
    const auto read = [this](uint64_t at, std::span<std::byte> part) { return Read(at, part); };
    buffer.resize(ReadBySectors(read, offset, buffer, scratch));
    return buffer;
  }
  Bytes Part(size_t first, size_t end) const {
    return Bytes(bytes.begin() + static_cast<ptrdiff_t>(first),
                 bytes.begin() + static_cast<ptrdiff_t>(std::max(first, end)));
  }
};

TEST(SectorReads, TheLastSectorsOfADeviceThatEndsWithinABlockAreRead) {
  constexpr size_t kSize = 2 * 4'096 + 3 * 512;
  StrictDevice device(kSize, 512);
  for (const size_t offset : {0u, 1u, 511u, 512u, 4'095u, 4'096u, 8'191u, 8'192u, 9'000u, 9'727u}) {
    for (const size_t length : {1u, 512u, 1'024u, 4'096u, 8'192u, 65'536u}) {
      EXPECT_EQ(device.Get(offset, length), device.Part(offset, std::min(offset + length, kSize)))
          << offset << " " << length;
    }
  }
  EXPECT_TRUE(device.Get(kSize, 512).empty());
  EXPECT_TRUE(device.Get(100'000, 512).empty());
  EXPECT_TRUE(device.Get(0, 0).empty());
  EXPECT_EQ(device.refused, 0u);
}

TEST(SectorReads, NothingIsReadIntoNoMemory) {
  StrictDevice device(4 * 4'096, 512);
  for (const size_t offset : {0u, 700u, 4'096u, 100'000u}) {
    SCOPED_TRACE(offset);
    EXPECT_TRUE(device.Get(offset, 0).empty());
  }
}

TEST(SectorReads, ABadSectorInFrontOfTheWantedOnesDoesNotCostThem) {
  StrictDevice device(4 * 4'096, 512);
  device.badPlace = 4'096 + 10;
  EXPECT_EQ(device.Get(4'096 + 512, 300), device.Part(4'608, 4'908));
  EXPECT_EQ(device.Get(4'096 + 3'000, 2'000), device.Part(7'096, 9'096));
  EXPECT_TRUE(device.Get(4'096 + 511, 300).empty());
  EXPECT_EQ(device.refused, 0u);
}

TEST(SectorReads, ADeviceOfLargeSectorsIsReadInThem) {
  StrictDevice device(4 * 4'096, 4'096);
  EXPECT_EQ(device.Get(100, 5'000), device.Part(100, 5'100));
  EXPECT_EQ(device.Get(4'096, 8'192), device.Part(4'096, 12'288));
  EXPECT_EQ(device.refused, 0u);
  EXPECT_EQ(device.Get(12'000, 65'536), device.Part(12'000, 16'384));
}

TEST(SectorReads, WhatLiesInFrontOfABadSectorIsRead) {
  StrictDevice device(16 * 4'096, 512);
  device.badPlace = 5 * 4'096 + 3 * 512 + 17;
  EXPECT_EQ(device.Get(0, 65'536), device.Part(0, 5 * 4'096 + 3 * 512));
  EXPECT_EQ(device.Get(5 * 4'096 + 512, 1'024), device.Part(5 * 4'096 + 512, 5 * 4'096 + 1'536));
  EXPECT_TRUE(device.Get(device.badPlace, 100).empty());
}

TEST(SectorReads, ShortReadsAreGoneOnFrom) {
  const StrictDevice device(40'000, 1);
  Bytes buffer(40'000), scratch;
  const auto readLittle = [&](uint64_t offset, std::span<std::byte> part) {
    if (offset >= device.bytes.size()) return size_t{0};
    const size_t count =
        std::min({part.size(), size_t{4'608}, device.bytes.size() - static_cast<size_t>(offset)});
    std::copy_n(device.bytes.begin() + static_cast<ptrdiff_t>(offset), count, part.begin());
    return count;
  };
  EXPECT_EQ(ReadBySectors(readLittle, 0, buffer, scratch), 40'000u);
  EXPECT_EQ(buffer, device.bytes);
}

}  // namespace
}  // namespace quilmark
