#include "platform/crc32.h"

#include <array>
#include <cstring>

namespace quilmark {

namespace {

constexpr size_t kSlices = 16;  // bytes taken at once, each by a table of its own
constexpr uint32_t kPolynomial = 0xEDB8'8320;

using Table = std::array<uint32_t, 256>;

// Table n: what a byte does to the checksum n bytes later.
constexpr std::array<Table, kSlices> kTables = [] {
  std::array<Table, kSlices> tables{};
  for (uint32_t byte = 0; byte < 256; ++byte) {
    uint32_t crc = byte;
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? kPolynomial : 0);
    tables[0][byte] = crc;
  }
  for (size_t slice = 1; slice < kSlices; ++slice) {
    for (size_t byte = 0; byte < 256; ++byte) {
      const uint32_t former = tables[slice - 1][byte];
      tables[slice][byte] = former >> 8 ^ tables[0][former & 0xFF];
    }
  }
  return tables;
}();

uint32_t LoadWord(const std::byte* at) {
  uint32_t word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

// Of four bytes, the last of which is followed by `behind` more.
uint32_t OfWord(uint32_t word, size_t behind) {
  return kTables[behind + 3][word & 0xFF] ^ kTables[behind + 2][word >> 8 & 0xFF] ^
         kTables[behind + 1][word >> 16 & 0xFF] ^ kTables[behind][word >> 24];
}

}  // namespace

uint32_t Crc32(std::span<const std::byte> bytes, uint32_t before) {
  uint32_t crc = ~before;
  const std::byte* at = bytes.data();
  size_t left = bytes.size();
  for (; left >= kSlices; at += kSlices, left -= kSlices) {
    crc = OfWord(LoadWord(at) ^ crc, 12) ^ OfWord(LoadWord(at + 4), 8) ^ OfWord(LoadWord(at + 8), 4) ^
          OfWord(LoadWord(at + 12), 0);
  }
  for (; left != 0; ++at, --left) crc = crc >> 8 ^ kTables[0][(crc ^ static_cast<uint32_t>(*at)) & 0xFF];
  return ~crc;
}

}  // namespace quilmark
